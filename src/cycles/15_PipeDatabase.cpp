#include "15_PipeDatabase.h"

#include <algorithm>
#include <cmath>

namespace frigana {

namespace {

// ---- sizes ----------------------------------------------------------------------------------------------------------

struct PipeSize {
    std::string_view name;
    float outer;
    float inner[3];
};
constexpr PipeSize firstMaterial[] = {
    // name, outer size [m], inner diameter by wall option [m]
    {"1/4", 0.00635f, {0.00470946f, 0.00504626f, 0.00504626f}},
    {"3/8", 0.009525f, {0.00790125f, 0.00800454f, 0.00825711f}},
    {"1/2", 0.0127f, {0.01021388f, 0.01091372f, 0.01142846f}},
    {"5/8", 0.015875f, {0.01338188f, 0.01383461f, 0.01444461f}},
    {"3/4", 0.01905f, {0.01656388f, 0.01690747f, 0.01752769f}},
    {"7/8", 0.022225f, {0.01892484f, 0.01993938f, 0.0206079f}},
    {"1 1/8", 0.028575f, {0.0252801f, 0.0260325f, 0.02680976f}},
    {"1 3/8", 0.034925f, {0.03161799f, 0.03213339f, 0.03280383f}},
    {"1 5/8", 0.041275f, {0.03636653f, 0.03823833f, 0.03877167f}},
    {"2 1/8", 0.053975f, {0.0497247f, 0.05038116f, 0.05102918f}},
    // 10
    {"2 5/8", 0.066675f, {0.06180384f, 0.06259623f, 0.06337871f}},
    {"3 1/8", 0.079375f, {0.07385383f, 0.07479327f, 0.07572106f}},
    {"3 5/8", 0.092075f, {0.08598253f, 0.08697987f, 0.08787248f}},
    {"4 1/8", 0.104775f, {0.09803517f, 0.09928407f, 0.100108f}},
    {"5 1/8", 0.130175f, {0.121935f, 0.1239395f, 0.1246005f}},
    {"6 1/8", 0.155575f, {0.1458609f, 0.1483735f, 0.1494767f}},
    {"8 1/8", 0.206375f, {0.1926896f, 0.1962797f, 0.197739f}},
    {"10 1/8", 0.257175f, {0.239965f, 0.2445427f, 0.2465499f}},
    {"12 1/8", 0.307975f, {0.2848836f, 0.2936862f, 0.2950814f}},
};
// Both other materials have the same sizes.
constexpr PipeSize otherMaterials[] = {
    // name, outer size [m], inner diameter by wall option [m]
    {"1/8", 0.010414f, {0.006858f, 0.005588f}},
    {"1/4", 0.013716f, {0.009144f, 0.00762f}},
    {"3/8", 0.017272f, {0.012446f, 0.010668f}},
    {"1/2", 0.021336f, {0.015748f, 0.01397f}},
    {"3/4", 0.02667f, {0.020828f, 0.018796f}},
    {"1", 0.033528f, {0.02667f, 0.024384f}},
    {"1 1/4", 0.042164f, {0.035052f, 0.032512f}},
    {"1 1/2", 0.04826f, {0.040894f, 0.0381f}},
    {"2", 0.060452f, {0.052578f, 0.049276f}},
    {"2 1/2", 0.073152f, {0.062738f, 0.058928f}},
    // 10
    {"3", 0.0889f, {0.077978f, 0.07366f}},
    {"3 1/2", 0.1016f, {0.09017f, 0.085344f}},
    {"4", 0.1143f, {0.102362f, 0.097282f}},
    {"5", 0.141224f, {0.12827f, 0.122174f}},
    {"6", 0.168402f, {0.154178f, 0.146304f}},
    {"8", 0.219202f, {0.202692f, 0.193802f}},
    {"10", 0.27305f, {0.254508f, 0.242824f}},
    {"12", 0.32385f, {0.303276f, 0.289052f}},
    {"14", 0.3556f, {0.333502f, 0.3175f}},
    {"16", 0.4064f, {0.381f, 0.363474f}},
    // 20
    {"18", 0.4572f, {0.428752f, 0.409702f}},
    {"20", 0.508f, {0.477774f, 0.455676f}},
    {"24", 0.6096f, {0.574802f, 0.547624f}},
};

struct Material {
    float roughness;  // m
    std::span<const PipeSize> sizes;
};
constexpr Material materials[] = {
    {1.5e-6f, firstMaterial},
    {6.5e-5f, otherMaterials},
    {2.5e-6f, otherMaterials},
};

const Material& materialOf(int material) {
    return materials[material - 1];
}

constexpr double sizeTolerance = static_cast<double>(0.0001f);  // m

}  // namespace

void clearPipe(PIPEOPT& record, int i) {
    record.NOMI[i].clear();
    for (auto* field : {&record.DEXT, &record.DINT, &record.VEL, &record.DP, &record.DTSAT}) (*field)[i] = missingValue;
}

void clearPipes(PIPEOPT& record) {
    for (int i = 1; i <= pipeOptions; ++i) clearPipe(record, i);
}

double pipeRoughness(int material) {
    return static_cast<double>(materialOf(material).roughness);
}

void PIPING_NEIGHBORS(int material, int wallOption, double D, PIPEOPT& record) {
    const auto sizes = materialOf(material).sizes;
    const int n = static_cast<int>(sizes.size());
    const auto size = [&](int row) -> const PipeSize& { return sizes[static_cast<std::size_t>(row - 1)]; };
    const auto inner = [&](int row) { return static_cast<double>(size(row).inner[wallOption - 1]); };

    // The last size not above D; D may be anything, also not a number.
    int c = 1;
    for (int i = 1; i <= n; ++i)
        if (D + sizeTolerance >= inner(i)) c = i;

    const auto offer = [&](int option, int row) {
        row = std::clamp(row, 1, n);
        record.DEXT[option] = static_cast<double>(size(row).outer);
        record.DINT[option] = inner(row);
        record.NOMI[option] = size(row).name;
    };
    if (std::fabs(D - inner(c)) <= sizeTolerance) {
        offer(1, c - 2);
        offer(2, c - 1);
        offer(3, c);
    } else {
        offer(1, c - 1);
        offer(2, c);
        record.DEXT[wantedPipe] = missingValue;
        record.DINT[wantedPipe] = D;
        record.NOMI[wantedPipe] = notStandard;
    }
    offer(4, c + 1);
    offer(5, c + 2);
    offer(6, c + 3);
}

// ---- velocities -----------------------------------------------------------------------------------------------------

namespace {

struct VelocityLimits {
    float lowest, highest;  // m/s
};
constexpr VelocityLimits risingSuction{4.5833f, 20.3333f};
constexpr VelocityLimits levelSuction{2.54f, 20.3333f};
constexpr VelocityLimits discharge{10.1667f, 17.8333f};
constexpr VelocityLimits liquidToReceiver{0.0001f, 0.5077f};
constexpr VelocityLimits liquidToExpansion{0.0001f, 1.5233f};

VelocityLimits velocityLimits(int line, double elevation, int receiver) {
    constexpr int suctionLine = 1;
    constexpr int dischargeLine = 2;
    if (line == suctionLine) return elevation > 0.0 ? risingSuction : levelSuction;
    if (line == dischargeLine) return discharge;
    return receiver == 1 ? liquidToReceiver : liquidToExpansion;
}

}  // namespace

void PIPE_VLIMITS(int line, double elevation, int receiver, double& vmin, double& vmax) {
    const VelocityLimits limits = velocityLimits(line, elevation, receiver);
    vmin = static_cast<double>(limits.lowest);
    vmax = static_cast<double>(limits.highest);
}

}  // namespace frigana
