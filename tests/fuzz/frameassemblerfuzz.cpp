// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/frameassembler.h"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <vector>

using namespace Velmo::GigE::Internal;

namespace
{

void Require(bool holds)
{
    if (!holds)
    {
        std::abort();
    }
}

constexpr std::size_t BufferCount = 3;
constexpr std::size_t BufferBytes = 700;

/** Every buffer is with the assembler or with us, and no result says more bytes than its buffer has. */
void TakeAll(CFrameAssembler& assembler, std::set<void*>& queued)
{
    Velmo::Transport::SStreamResult result;
    while (assembler.TakeResult(result))
    {
        Require(queued.erase(result.pContext) == 1);
        Require(result.payloadBytes <= BufferBytes);
    }
}

} // namespace

/** The input is a row of packets, each behind its length (one byte) and the milliseconds that pass before it. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::vector<std::vector<std::uint8_t>> memory(BufferCount, std::vector<std::uint8_t>(BufferBytes));
    std::set<void*> queued;
    CFrameAssembler assembler(136, std::chrono::milliseconds(200));
    CFrameAssembler::Time now{};
    while (size >= 2)
    {
        for (auto& buffer : memory)
        {
            if (queued.insert(&buffer).second)
            {
                assembler.AddBuffer(&buffer, buffer.data(), buffer.size());
            }
        }
        const std::size_t bytes = std::min<std::size_t>(data[0], size - 2);
        now += std::chrono::milliseconds(data[1]);
        assembler.Expire(now);
        assembler.Push(data + 2, bytes, now);
        data += 2 + bytes;
        size -= 2 + bytes;
        TakeAll(assembler, queued);
    }
    assembler.CancelAll();
    TakeAll(assembler, queued);
    Require(queued.empty());
    return 0;
}
