// Damaged requests, each run whole through the entry with the data of the installation: the answer must be right in
// form whatever was asked (RunOracle.h).
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "RunOracle.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace frigana::fuzz;
    static const OwnFolder folder(FRIGANA_DATA);
    std::ofstream(folder.request(), std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    RunOracle oracle;
    const Verdict verdict = oracle.run(folder.request(), folder.installation());
    if (verdict.wrong.empty()) return 0;
    std::printf("%s: %s\n", verdict.cause.c_str(), verdict.wrong.c_str());
    std::abort();
}
