// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "codec/frame.h"

#include <memory>
#include <vector>

struct ZSTD_CCtx_s;

namespace Velmo::Codec::Internal
{

/** Codes images of one descriptor with a given error. Threads: one at a time. */
class CFrameWriter
{
public:
    struct SOutcome
    {
        bool fits = false;
        std::uint64_t frameBytes = 0; // when it does not fit: what it would probably have
    };

    explicit CFrameWriter(const SDescriptor& descriptor);
    ~CFrameWriter();

    /** target is made MaxFrameBytes long at least; only its first frameBytes are the frame. Stops at the first strip
     *  with which the frame would be longer than the descriptor allows. */
    SOutcome Write(const std::uint8_t* pImage, std::uint32_t maxError, std::vector<std::uint8_t>& target);
    /** A frame that says there is no image. */
    void WriteOverflow(std::vector<std::uint8_t>& target);

    std::uint64_t GetLimit() const { return m_limit; }

private:
    struct SFree
    {
        void operator()(ZSTD_CCtx_s* pContext) const;
    };
    std::size_t WriteStrip(const std::uint8_t* pStrip, std::size_t bytes, std::uint32_t maxError, std::uint8_t* pTarget,
                           std::size_t room, std::uint8_t* pEntry);
    SFrameHeader MakeHeader() const;

    const SDescriptor m_descriptor;
    const DescriptorHash m_hash;
    const std::uint64_t m_limit;
    std::unique_ptr<ZSTD_CCtx_s, SFree> m_context;
    std::vector<std::uint8_t> m_filtered;
    std::vector<std::uint8_t> m_scratch;
};

} // namespace Velmo::Codec::Internal
