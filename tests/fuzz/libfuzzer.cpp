// The targets in the hands of libFuzzer: VORTEL_FUZZ_TARGET names the one that runs.

#include "FuzzTargets.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

const FuzzTarget* target = nullptr;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    startFuzzing(argc, *argv);
    target = fuzzTarget(qgetenv("VORTEL_FUZZ_TARGET"));
    if (!target) {
        std::fputs("VORTEL_FUZZ_TARGET names no target\n", stderr);
        std::exit(2);
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    target->run(QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size)));
    return 0;
}
