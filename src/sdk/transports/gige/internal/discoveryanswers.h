// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/gvcp.h"
#include "transports/gige/gige_testexport.h"
#include "transports/gige/internal/adapters.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Velmo::GigE::Internal
{

enum class EAccessStatus
{
    Free,
    InUse,
    Unreachable, // in another subnet, or it does not answer register reads
};

/** One camera that answered. */
struct SFoundDevice
{
    Gvcp::SDiscoveryAck ack;
    std::uint32_t ip = 0; // host byte order
    SAdapter adapter;
    bool isRemote = false; // it was asked by its address
    EAccessStatus access = EAccessStatus::Unreachable;
};

/** A read of the control privilege, which tells whether a camera is free. */
struct SPrivilegeQuestion
{
    std::uint16_t requestId = 0;
    std::uint32_t ip = 0;  // host byte order
    std::string adapterId; // through which it is to be sent
};

/**
 * Sorts what arrives during one discovery: which camera an answer is of, which of its records to keep when it answers
 * on several adapters, whom to ask whether it is free. No sockets, no clock. Threads: one at a time.
 */
class GIGE_TEST_EXPORT CDiscoveryAnswers
{
public:
    static constexpr std::size_t MostDevices = 4096;

    /** What a datagram gave rise to. */
    struct STaken
    {
        bool isNewDevice = false;
        std::optional<SPrivilegeQuestion> question; // to be sent now
    };

    /** discoveryId: of the discovery commands, 1 to 0x7FFF; the questions have those above. askedAddresses: cameras
     *  that are asked by their addresses; expectedAddresses: those that must answer. Host byte order. */
    CDiscoveryAnswers(std::uint16_t discoveryId, std::vector<std::uint32_t> askedAddresses,
                      std::set<std::uint32_t> expectedAddresses);

    /** A datagram that came to that adapter's sockets. Ignored: what is no whole answer to this discovery from GVCP's
     *  port, and who says that he is at an address at which everybody or nobody is. */
    STaken Take(const std::uint8_t* data, std::size_t bytes, std::uint32_t senderIp, std::uint16_t senderPort,
                const SAdapter& adapter);

    /** Each camera once, in the order of their first answers. */
    const std::vector<SFoundDevice>& GetDevices() const { return m_devices; }
    /** Those that were not answered. */
    std::vector<SPrivilegeQuestion> GetOpenQuestions() const;
    bool HasOpenQuestions() const { return !m_asked.empty(); }
    /** Has every expected address answered? */
    bool IsComplete() const { return m_expected.empty(); }

private:
    STaken TakeDevice(const Gvcp::SAcknowledge& ack, std::uint32_t senderIp, const SAdapter& adapter);
    void TakePrivilege(const Gvcp::SAcknowledge& ack, std::uint32_t senderIp);
    SPrivilegeQuestion Ask(std::size_t index);
    SPrivilegeQuestion MakeQuestion(std::size_t index) const;

    const std::uint16_t m_discoveryId;
    const std::vector<std::uint32_t> m_askedAddresses;
    std::set<std::uint32_t> m_expected; // of those that have not answered yet
    std::vector<SFoundDevice> m_devices;
    std::map<std::uint16_t, std::size_t> m_asked; // request identifier to index of the device
};

} // namespace Velmo::GigE::Internal
