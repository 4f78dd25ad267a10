// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/protocols_export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/**
 * The GigE Vision Control Protocol as bytes: what goes into a datagram and what comes out of one.
 *
 * Pure functions without sockets or state, for both ends of a connection. Everything that is parsed may come from a
 * stranger: a parser answers with an EParseResult and leaves its output untouched unless it answers Ok.
 * Threads: any.
 */
namespace Velmo::Gvcp
{

constexpr std::uint16_t Port = 3956;
constexpr std::uint8_t Key = 0x42; // GVCP header, "message key code value"
constexpr std::size_t HeaderBytes = 8;
constexpr std::size_t MaxPayloadBytes = 540; // GVCP packet of 576 bytes less IP, UDP and GVCP headers
constexpr std::size_t MaxReadRegisters = MaxPayloadBytes / 4;
constexpr std::size_t MaxWriteRegisters = MaxPayloadBytes / 8;
constexpr std::size_t MaxMemoryBytes = MaxPayloadBytes - 4; // READMEM, WRITEMEM: an address comes first
constexpr std::size_t DiscoveryAckBytes = 248;

/** GVCP header, "command" and "answer". */
enum class ECommand : std::uint16_t
{
    DiscoveryCmd = 0x0002,
    DiscoveryAck = 0x0003,
    ForceIpCmd = 0x0004,
    ForceIpAck = 0x0005,
    PacketResendCmd = 0x0040,
    ReadRegCmd = 0x0080,
    ReadRegAck = 0x0081,
    WriteRegCmd = 0x0082,
    WriteRegAck = 0x0083,
    ReadMemCmd = 0x0084,
    ReadMemAck = 0x0085,
    WriteMemCmd = 0x0086,
    WriteMemAck = 0x0087,
    PendingAck = 0x0089,
    EventCmd = 0x00C0,
    EventAck = 0x00C1,
    EventDataCmd = 0x00C2,
    EventDataAck = 0x00C3,
    ActionCmd = 0x0100,
    ActionAck = 0x0101
};

/** GVCP acknowledge header, "status". */
enum class EStatus : std::uint16_t
{
    Success = 0x0000,
    PacketResend = 0x0100,
    NotImplemented = 0x8001,
    InvalidParameter = 0x8002,
    InvalidAddress = 0x8003,
    WriteProtect = 0x8004,
    BadAlignment = 0x8005,
    AccessDenied = 0x8006,
    Busy = 0x8007,
    LocalProblem = 0x8008,
    MessageMismatch = 0x8009,
    InvalidProtocol = 0x800A,
    NoMessage = 0x800B,
    PacketUnavailable = 0x800C,
    DataOverrun = 0x800D,
    InvalidHeader = 0x800E,
    WrongConfig = 0x800F,
    PacketNotYetAvailable = 0x8010,
    PacketAndPreviousRemoved = 0x8011,
    PacketRemoved = 0x8012,
    NoReferenceTime = 0x8013,
    PacketTemporarilyUnavailable = 0x8014,
    Overflow = 0x8015,
    ActionLate = 0x8016,
    Error = 0x8FFF
};

/** GVCP command header, "flag". Bit 7 of the field is 0x01 here. */
namespace Flag
{
constexpr std::uint8_t AckRequired = 0x01;
constexpr std::uint8_t AllowBroadcastAck = 0x10; // DISCOVERY_CMD, FORCEIP_CMD
constexpr std::uint8_t ExtendedIds = 0x10;       // PACKETRESEND_CMD, EVENT_CMD, EVENTDATA_CMD: 64-bit block IDs
constexpr std::uint8_t ScheduledAction = 0x80;   // ACTION_CMD: the action time follows
} // namespace Flag

enum class EParseResult
{
    Ok,
    TooShort,       // fewer bytes than the header, or than the header announces
    BadKey,         // a command without the key
    LengthMismatch, // the header's length does not fit this kind of packet
    BadAlignment,   // the address or the length is no multiple of four
    BadAddress      // the address and the length do not fit 32 bits
};

using Bytes = std::vector<std::uint8_t>;

/** A command's header and where its payload is; valid as long as the datagram. */
struct SCommand
{
    std::uint8_t flags = 0;
    std::uint16_t command = 0; // an ECommand, or one that is not known here
    std::uint16_t requestId = 0;
    const std::uint8_t* pPayload = nullptr;
    std::size_t payloadBytes = 0;
};

/** An acknowledge's header and where its payload is; valid as long as the datagram. */
struct SAcknowledge
{
    std::uint16_t status = 0;  // an EStatus, or one that is not known here
    std::uint16_t command = 0; // an ECommand, or one that is not known here
    std::uint16_t ackId = 0;
    const std::uint8_t* pPayload = nullptr;
    std::size_t payloadBytes = 0;
};

/** DISCOVERY_ACK: the camera's bootstrap registers up to its user name. Addresses in host byte order. */
struct SDiscoveryAck
{
    std::uint16_t versionMajor = 0;
    std::uint16_t versionMinor = 0;
    std::uint32_t deviceMode = 0;
    std::array<std::uint8_t, 6> mac{};
    std::uint32_t supportedIpConfiguration = 0;
    std::uint32_t currentIpConfiguration = 0;
    std::uint32_t currentIp = 0;
    std::uint32_t currentSubnetMask = 0;
    std::uint32_t defaultGateway = 0;
    std::string manufacturerName;
    std::string modelName;
    std::string deviceVersion;
    std::string manufacturerInfo;
    std::string serialNumber;
    std::string userDefinedName;
};

/** FORCEIP_CMD. Addresses in host byte order; a current IP of 0 makes the camera restart its IP configuration. */
struct SForceIp
{
    std::array<std::uint8_t, 6> mac{};
    std::uint32_t ip = 0;
    std::uint32_t subnetMask = 0;
    std::uint32_t gateway = 0;
};

/** PACKETRESEND_CMD. The last packet may be all ones of its width: up to the end of the block. */
struct SPacketResend
{
    std::uint16_t streamChannel = 0;
    bool isExtended = false;         // 64-bit block and 32-bit packet identifiers
    std::uint64_t blockId = 0;       // standard ID mode: 16 bits
    std::uint32_t firstPacketId = 0; // standard ID mode: 24 bits
    std::uint32_t lastPacketId = 0;  // standard ID mode: 24 bits
};

/** EVENT_CMD and, with data, EVENTDATA_CMD: one event each. */
struct SEvent
{
    std::uint16_t id = 0;
    std::uint16_t streamChannel = 0xFFFF; // all ones: of no stream channel
    bool isExtended = false;              // the block identifier has 64 bits
    std::uint64_t blockId = 0;            // 0: of no block
    std::uint64_t timestamp = 0;          // ticks of the camera's clock
    Bytes data;                           // EVENTDATA_CMD
};

/** ACTION_CMD. */
struct SAction
{
    std::uint32_t deviceKey = 0;
    std::uint32_t groupKey = 0;
    std::uint32_t groupMask = 0;
    bool isScheduled = false;
    std::uint64_t time = 0; // ticks of the camera's clock, of scheduled ones
};

using RegisterValues = std::vector<std::pair<std::uint32_t, std::uint32_t>>; // address, value

/** READMEM_ACK or WRITEMEM_CMD; the data are valid as long as the datagram. */
struct SMemory
{
    std::uint32_t address = 0;
    const std::uint8_t* pData = nullptr;
    std::size_t bytes = 0;
};

// Commands. Each returns the datagram. Lists and data beyond the protocol's limits, and memory that is not aligned to
// four bytes, return an empty one.
PROTOCOLS_EXPORT Bytes EncodeDiscoveryCmd(std::uint16_t requestId, bool allowBroadcastAck);
PROTOCOLS_EXPORT Bytes EncodeForceIpCmd(std::uint16_t requestId, const SForceIp& forceIp, bool allowBroadcastAck);
PROTOCOLS_EXPORT Bytes EncodeReadRegCmd(std::uint16_t requestId, const std::vector<std::uint32_t>& addresses);
PROTOCOLS_EXPORT Bytes EncodeWriteRegCmd(std::uint16_t requestId, const RegisterValues& values);
PROTOCOLS_EXPORT Bytes EncodeReadMemCmd(std::uint16_t requestId, std::uint32_t address, std::size_t bytes);
PROTOCOLS_EXPORT Bytes EncodeWriteMemCmd(std::uint16_t requestId, std::uint32_t address, const Bytes& data);
/** It draws packets, not an acknowledge. */
PROTOCOLS_EXPORT Bytes EncodePacketResendCmd(std::uint16_t requestId, const SPacketResend& resend);
/** Sent by the camera, on the message channel. */
PROTOCOLS_EXPORT Bytes EncodeEventCmd(std::uint16_t requestId, const SEvent& event, bool isAckRequired);
PROTOCOLS_EXPORT Bytes EncodeEventDataCmd(std::uint16_t requestId, const SEvent& event, bool isAckRequired);
PROTOCOLS_EXPORT Bytes EncodeActionCmd(std::uint16_t requestId, const SAction& action, bool isAckRequired);

// Acknowledges; as above. A status other than Success usually goes without values.
PROTOCOLS_EXPORT Bytes EncodeDiscoveryAck(std::uint16_t ackId, const SDiscoveryAck& ack);
PROTOCOLS_EXPORT Bytes EncodeForceIpAck(std::uint16_t ackId, EStatus status);
PROTOCOLS_EXPORT Bytes EncodeReadRegAck(std::uint16_t ackId, EStatus status, const std::vector<std::uint32_t>& values);
/** The index is the number of registers written, or of the one that failed. */
PROTOCOLS_EXPORT Bytes EncodeWriteRegAck(std::uint16_t ackId, EStatus status, std::uint16_t index);
PROTOCOLS_EXPORT Bytes EncodeReadMemAck(std::uint16_t ackId, EStatus status, std::uint32_t address, const Bytes& data);
/** The index is the number of bytes written, or of the one that failed. */
PROTOCOLS_EXPORT Bytes EncodeWriteMemAck(std::uint16_t ackId, EStatus status, std::uint16_t index);
PROTOCOLS_EXPORT Bytes EncodePendingAck(std::uint16_t ackId, std::uint16_t timeToCompletionMs);
/** EVENT_ACK, EVENTDATA_ACK, ACTION_ACK. */
PROTOCOLS_EXPORT Bytes EncodePlainAck(std::uint16_t ackId, ECommand answer, EStatus status);
/** A refusal of any kind of command as a whole. */
PROTOCOLS_EXPORT Bytes EncodeErrorAck(std::uint16_t ackId, ECommand answer, EStatus status);

// Datagrams into headers. Bytes behind the announced payload are ignored.
PROTOCOLS_EXPORT EParseResult ParseCommand(const std::uint8_t* data, std::size_t bytes, SCommand& command);
PROTOCOLS_EXPORT EParseResult ParseAcknowledge(const std::uint8_t* data, std::size_t bytes, SAcknowledge& ack);

// Payloads of commands.
PROTOCOLS_EXPORT EParseResult ParseForceIpCmd(const SCommand& command, SForceIp& forceIp);
PROTOCOLS_EXPORT EParseResult ParseReadRegCmd(const SCommand& command, std::vector<std::uint32_t>& addresses);
PROTOCOLS_EXPORT EParseResult ParseWriteRegCmd(const SCommand& command, RegisterValues& values);
PROTOCOLS_EXPORT EParseResult ParseReadMemCmd(const SCommand& command, std::uint32_t& address, std::size_t& bytes);
PROTOCOLS_EXPORT EParseResult ParseWriteMemCmd(const SCommand& command, SMemory& memory);
PROTOCOLS_EXPORT EParseResult ParsePacketResendCmd(const SCommand& command, SPacketResend& resend);
/** Of a command that holds several events: the first. */
PROTOCOLS_EXPORT EParseResult ParseEventCmd(const SCommand& command, SEvent& event);
PROTOCOLS_EXPORT EParseResult ParseEventDataCmd(const SCommand& command, SEvent& event);
PROTOCOLS_EXPORT EParseResult ParseActionCmd(const SCommand& command, SAction& action);

// Payloads of acknowledges whose status is Success.
PROTOCOLS_EXPORT EParseResult ParseDiscoveryAck(const SAcknowledge& ack, SDiscoveryAck& discovery);
PROTOCOLS_EXPORT EParseResult ParseReadRegAck(const SAcknowledge& ack, std::vector<std::uint32_t>& values);
PROTOCOLS_EXPORT EParseResult ParseWriteAck(const SAcknowledge& ack, std::uint16_t& index); // WRITEREG, WRITEMEM
PROTOCOLS_EXPORT EParseResult ParseReadMemAck(const SAcknowledge& ack, SMemory& memory);
PROTOCOLS_EXPORT EParseResult ParsePendingAck(const SAcknowledge& ack, std::uint16_t& timeToCompletionMs);

/** Whether it is that answer to that request, with whatever status. An acknowledge has no key: this and the sender are
 *  what tells an answer from a stranger's datagram. */
PROTOCOLS_EXPORT bool IsAnswer(const SAcknowledge& ack, ECommand answer, std::uint16_t requestId);

/** A person's words for a status; unknown ones as a number. */
PROTOCOLS_EXPORT std::string StatusText(std::uint16_t status);
/** "00:11:22:aa:bb:cc" */
PROTOCOLS_EXPORT std::string MacText(const std::array<std::uint8_t, 6>& mac);
/** "192.168.0.1" of an address in host byte order. */
PROTOCOLS_EXPORT std::string IpText(std::uint32_t ip);
/** False, and ip untouched, when the text is no dotted IPv4 address. */
PROTOCOLS_EXPORT bool ParseIp(const std::string& text, std::uint32_t& ip);

} // namespace Velmo::Gvcp
