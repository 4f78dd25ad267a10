// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "velmo/grabresult.h"

#include <cstddef>
#include <memory>

namespace Velmo::Internal
{

class CGrabSession;

/** One buffer and the grab result that views it; both are used again for every image. */
class CGrabBuffer final : public CGrabResultData
{
public:
    enum class EState
    {
        Idle,
        Queued, // with the stream
        Output, // waits to be taken
        Out     // with a user
    };

    /** Throws BadAllocException. */
    explicit CGrabBuffer(std::size_t bytes);
    ~CGrabBuffer() override;

    void* GetMemory() const { return m_pMemory; }
    void FreeMemory();
    /** Takes over what became of the buffer. */
    void Fill(Transport::SStreamResult&& result);
    void Number(std::int64_t imageNumber, std::int64_t skippedImages);
    /** Until the result comes back the session is kept alive. */
    CGrabResultPtr HandOut(std::shared_ptr<CGrabSession> session);

    EState state = EState::Idle; // guarded by the session's mutex

private:
    void Recycle() override;

    void* m_pMemory = nullptr;
    std::shared_ptr<CGrabSession> m_session; // while handed out
};

} // namespace Velmo::Internal
