// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/chunks.h"

#include <cstdlib>

using namespace Velmo::Chunks;

namespace
{

void Require(bool holds)
{
    if (!holds)
    {
        std::abort();
    }
}

/** Every chunk lies before the one read before it, and what could be read as a whole is written the same again. */
void Walk(const std::uint8_t* data, std::size_t size, EByteOrder order)
{
    CReader reader(data, size, order);
    const std::uint8_t* end = data + size;
    std::vector<SChunk> chunks;
    SChunk chunk;
    unsigned int sum = 0;
    while (reader.Next(chunk))
    {
        Require(chunk.pData >= data && chunk.pData + chunk.bytes + TrailerBytes == end);
        for (std::size_t i = 0; i < chunk.bytes; ++i)
        {
            sum += chunk.pData[i];
        }
        end = chunk.pData;
        chunks.push_back(chunk);
    }
    const volatile unsigned int used = sum; // keeps the reads
    static_cast<void>(used);
    const bool isOk = reader.GetState() == CReader::EState::Ok;
    Require(isOk == reader.GetErrorText().empty() && isOk == Check(data, size, order));
    Require(!isOk || end == data);
    SChunk found;
    for (const SChunk& known : chunks)
    {
        Require(Find(data, size, order, known.id, found) == isOk);
        const auto trailer = MakeTrailer(known.id, static_cast<std::uint32_t>(known.bytes), reader.GetByteOrder());
        for (std::size_t i = 0; i < trailer.size(); ++i)
        {
            Require(trailer[i] == known.pData[known.bytes + i]);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t MaxBytes = 4096; // more chunks show nothing new and make the checks quadratic
    size = size < MaxBytes ? size : MaxBytes;
    Walk(data, size, EByteOrder::Big);
    Walk(data, size, EByteOrder::Little);
    Walk(data, size, EByteOrder::Auto);
    return 0;
}
