// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <mutex>

namespace Velmo::GigE::Internal
{

struct SOpenCamera;

/** Why a camera has the packet size that it has. The values are those of the stream grabber's PacketSizeOrigin. */
enum class EPacketSizeOrigin : std::int64_t
{
    Camera,      // as it was found; nothing was chosen yet, or choosing is switched off or failed
    User,        // written by the user, which stands
    TestPackets, // the largest of which a test packet arrived
    Limits,      // no test packet arrived at all: the most that adapter and camera allow
};

/** Bytes with the headers of IP, UDP and GVSP. */
struct SPacketSizeChoice
{
    EPacketSizeOrigin origin = EPacketSizeOrigin::Camera;
    std::uint32_t bytes = 0;     // of the camera's setting; 0: nothing was chosen yet
    std::uint32_t pathBytes = 0; // the largest test packet that arrived; 0: none did, or none was asked for
    bool isTested = false;       // test packets were asked for
};

/** Chooses the packet size of a controlled camera. Threads: any; only while no stream is started. */
class CPacketSize
{
public:
    /** Before a grab. Does it once for each time that the camera is opened, and only if it is wanted. Logs what came of
     *  it; never throws: without a choice the camera sends as it did. */
    void ChooseForGrab(SOpenCamera& camera, bool isWanted);
    /** Tests the path at once, again if need be, and chooses unless the user did. Throws GenICam exceptions. */
    void Probe(SOpenCamera& camera);
    SPacketSizeChoice Get() const;

private:
    SPacketSizeChoice Choose(SOpenCamera& camera, bool isUsersStanding);
    void Keep(const SPacketSizeChoice& choice);

    std::mutex m_chooseMutex; // one choice at a time
    bool m_isDone = false;
    mutable std::mutex m_mutex; // guards m_choice
    SPacketSizeChoice m_choice;
};

} // namespace Velmo::GigE::Internal
