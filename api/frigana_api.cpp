// The C interface for programs: texts and arrays in and out, no exception beyond it.
#include "frigana_api.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "CatalogueJson.h"
#include "ChartJson.h"
#include "DataFolder.h"
#include "EngineAccess.h"
#include "Properties.h"
#include "RunJson.h"

struct frigana_fluid {
    frigana::programs::PropertyFluid fluid;
};

namespace {

using namespace frigana::programs;

static_assert(FRIGANA_VAPOR_DENSITY == static_cast<int>(Property::vaporDensity));
static_assert(FRIGANA_PHASE == static_cast<int>(Property::phase));
static_assert(FRIGANA_VAPOR_FRACTION == static_cast<int>(Property::vaporFraction));
static_assert(FRIGANA_NOT_FINITE == notFinite && FRIGANA_QUALITY_OUT_OF_RANGE == qualityOutOfRange);

thread_local std::string lastError;

int fail(int status, const std::string& text) noexcept {
    try {
        lastError = text;
    } catch (...) {
        lastError.clear();
    }
    return status;
}

// Calls what may throw.
template <class Call>
int guarded(Call call) noexcept {
    try {
        return call();
    } catch (const std::bad_alloc&) {
        return fail(FRIGANA_FAILED, "there is not enough memory");
    } catch (const std::exception& exception) {
        return fail(FRIGANA_FAILED, exception.what());
    } catch (...) {
        return fail(FRIGANA_FAILED, "something that is no std::exception");
    }
}

int handOut(const std::string& text, char** answer) {
    *answer = static_cast<char*>(std::malloc(text.size() + 1));
    if (*answer == nullptr) return fail(FRIGANA_FAILED, "there is not enough memory");
    std::memcpy(*answer, text.c_str(), text.size() + 1);
    return FRIGANA_DONE;
}

int handOut(const JsonAnswer& given, char** answer) {
    constexpr int done = 200, refused = 422;
    if (const int status = handOut(given.json, answer); status != FRIGANA_DONE) return status;
    if (given.status == done) return FRIGANA_DONE;
    return given.status == refused ? fail(FRIGANA_REFUSED, "the calculation was refused; the answer tells why")
                                   : fail(FRIGANA_FAULTY, "the request cannot be read; the answer tells why");
}

std::string neededDataFolder() {
    std::string folder = dataFolder();
    if (folder.empty()) throw std::runtime_error("no data folder was found; name one by frigana_set_data");
    return folder;
}

void copyText(void* context, std::size_t index, int, std::string_view text) {
    auto* texts = static_cast<char(*)[FRIGANA_TEXT]>(context);
    const std::size_t length = std::min<std::size_t>(text.size(), FRIGANA_TEXT - 1);
    std::memcpy(texts[index], text.data(), length);
    texts[index][length] = '\0';
}

}  // namespace

const char* frigana_version(void) {
    return FRIGANA_VERSION;
}

int frigana_set_data(const char* folder) {
    return guarded([&] {
        if (folder == nullptr) return fail(FRIGANA_FAULTY, "there is no folder");
        const std::string problem = chooseDataFolder(folder);
        return problem.empty() ? FRIGANA_DONE : fail(FRIGANA_FAULTY, problem);
    });
}

const char* frigana_last_error(void) {
    return lastError.c_str();
}

void frigana_free(char* text) {
    std::free(text);
}

int frigana_run(const char* request, char** answer) {
    if (answer == nullptr) return fail(FRIGANA_FAULTY, "there is no place for the answer");
    *answer = nullptr;
    return guarded([&] {
        if (request == nullptr) return fail(FRIGANA_FAULTY, "there is no request");
        const std::string folder = neededDataFolder();
        JsonAnswer given;
        {
            const EngineAccess engine;
            EngineAccess::setLoaded(0);
            RunRules rules{folder};
            rules.format = formatOf(request);
            given = runJson(request, rules);
        }
        return handOut(given, answer);
    });
}

int frigana_chart(const char* chart, char** answer) {
    if (answer == nullptr) return fail(FRIGANA_FAULTY, "there is no place for the answer");
    *answer = nullptr;
    return guarded([&] {
        if (chart == nullptr) return fail(FRIGANA_FAULTY, "there is no chart");
        const std::string folder = neededDataFolder();
        JsonAnswer given{200, {}};
        {
            const EngineAccess engine;
            EngineAccess::setLoaded(0);
            const auto problems = chartJson(chart, folder, given.json);
            if (!problems.empty()) given = refusal("bad_chart", problems);
        }
        return handOut(given, answer);
    });
}

int frigana_list_requests(char** answer) {
    if (answer == nullptr) return fail(FRIGANA_FAULTY, "there is no place for the answer");
    *answer = nullptr;
    return guarded([&] { return handOut(requestsJson(), answer); });
}

int frigana_list_fluids(char** answer) {
    if (answer == nullptr) return fail(FRIGANA_FAULTY, "there is no place for the answer");
    *answer = nullptr;
    return guarded([&] {
        const std::string folder = neededDataFolder();
        std::string list;
        {
            const EngineAccess engine;
            EngineAccess::setLoaded(0);
            list = fluidsJson(folder);
        }
        return handOut(list, answer);
    });
}

int frigana_fluid_open(const char* description, frigana_fluid** fluid) {
    if (fluid == nullptr) return fail(FRIGANA_FAULTY, "there is no place for the handle");
    *fluid = nullptr;
    return guarded([&] {
        if (description == nullptr) return fail(FRIGANA_FAULTY, "there is no description");
        const std::string folder = neededDataFolder();
        auto opened = std::make_unique<frigana_fluid>();
        std::string problem;
        {
            const EngineAccess engine;
            problem = opened->fluid.open(description, folder);
        }
        if (!problem.empty()) return fail(FRIGANA_FAULTY, problem);
        *fluid = opened.release();
        return static_cast<int>(FRIGANA_DONE);
    });
}

void frigana_fluid_close(frigana_fluid* fluid) {
    delete fluid;
}

int frigana_fluid_facts(const frigana_fluid* fluid, char** answer) {
    if (answer == nullptr) return fail(FRIGANA_FAULTY, "there is no place for the answer");
    *answer = nullptr;
    return guarded([&] {
        if (fluid == nullptr) return fail(FRIGANA_FAULTY, "there is no fluid");
        return handOut(fluid->fluid.facts(), answer);
    });
}

int frigana_states(const frigana_fluid* fluid, char first, char second, const double* firstValues,
                   const double* secondValues, size_t count, const int* properties, size_t propertyCount,
                   double* results, int* codes, char (*texts)[FRIGANA_TEXT]) {
    return guarded([&] {
        if (fluid == nullptr) return fail(FRIGANA_FAULTY, "there is no fluid");
        if (count > 0 && (firstValues == nullptr || secondValues == nullptr))
            return fail(FRIGANA_FAULTY, "there are no values");
        if (propertyCount > 0 && (properties == nullptr || (results == nullptr && count > 0)))
            return fail(FRIGANA_FAULTY, "there is no place for the results");
        for (size_t i = 0; texts != nullptr && i < count; ++i) texts[i][0] = '\0';
        const PropertyFluid::Question question{first,        second, firstValues,
                                               secondValues, count,  {properties, propertyCount},
                                               results,      codes,  texts != nullptr ? copyText : nullptr,
                                               texts};
        std::string problem;
        {
            const EngineAccess engine;
            problem = fluid->fluid.answer(question);
        }
        return problem.empty() ? static_cast<int>(FRIGANA_DONE) : fail(FRIGANA_FAULTY, problem);
    });
}

int frigana_saturation(const frigana_fluid* fluid, char given, int dew, const double* values, size_t count,
                       const int* properties, size_t propertyCount, double* results, int* codes,
                       char (*texts)[FRIGANA_TEXT]) {
    return guarded([&] {
        if (given != 'T' && given != 't' && given != 'P' && given != 'p')
            return fail(FRIGANA_FAULTY, "saturation is asked for at T or P");
        const std::vector<double> quality(count, dew != 0 ? 1.0 : 0.0);
        return frigana_states(fluid, given, 'Q', values, quality.data(), count, properties, propertyCount, results,
                              codes, texts);
    });
}
