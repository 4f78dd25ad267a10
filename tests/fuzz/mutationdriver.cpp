// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/seed.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace
{

using Bytes = std::vector<std::uint8_t>;

std::vector<Bytes> ReadSeeds(const char* folder)
{
    std::vector<Bytes> seeds{Bytes()};
    if (folder == nullptr || !std::filesystem::is_directory(folder))
    {
        return seeds;
    }
    for (const auto& entry : std::filesystem::directory_iterator(folder))
    {
        std::ifstream file(entry.path(), std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return seeds;
}

Bytes Mutate(Bytes input, std::mt19937_64& random)
{
    const auto below = [&random](std::size_t limit)
    {
        return static_cast<std::size_t>(random() % limit);
    };
    for (std::size_t changes = 1 + below(8); changes > 0; --changes)
    {
        const std::size_t kind = below(4);
        if (kind == 0 || input.empty())
        {
            input.insert(input.begin() + static_cast<std::ptrdiff_t>(below(input.size() + 1)),
                         static_cast<std::uint8_t>(random()));
        }
        else if (kind == 1)
        {
            input[below(input.size())] ^= static_cast<std::uint8_t>(1U << below(8));
        }
        else if (kind == 2)
        {
            input.resize(below(input.size() + 1));
        }
        else
        {
            input[below(input.size())] = static_cast<std::uint8_t>(random());
        }
    }
    return input;
}

} // namespace

/** Usage: <program> [folder of seeds] [number of the random sequence]. */
int main(int argc, char** argv)
{
    constexpr int rounds = 2000;
    const std::uint64_t sequence = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : ::Test::randomSeed();
    std::printf("random sequence %llu\n", static_cast<unsigned long long>(sequence));
    std::fflush(stdout);
    std::mt19937_64 random(sequence);
    const std::vector<Bytes> seeds = ReadSeeds(argc > 1 ? argv[1] : nullptr);
    for (const Bytes& seed : seeds)
    {
        LLVMFuzzerTestOneInput(seed.data(), seed.size());
    }
    for (int round = 0; round < rounds; ++round)
    {
        const Bytes input = Mutate(seeds[random() % seeds.size()], random);
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    std::printf("%d inputs from %zu seeds\n", rounds, seeds.size());
    return 0;
}
