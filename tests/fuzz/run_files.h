// The main routine of a fuzzer without its engine: runs the files on the command line.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

#ifdef VANTORIX_FUZZ_MAIN
#include <fstream>
#include <iterator>
#include <vector>

int main(int argumentCount, char** arguments) {
    for (int i = 1; i < argumentCount; ++i) {
        std::ifstream file(arguments[i], std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
}
#endif
