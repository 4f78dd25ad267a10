// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/gigeserver_testexport.h"
#include "gigeserver/servedcamera.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

namespace GigEServer::Internal
{

constexpr std::uint32_t ActionSignals = 4; // of the camera model

/** "02:..." of a camera: locally administered, made from its serial number and address. */
GIGESERVER_TEST_EXPORT std::array<std::uint8_t, 6> MakeMac(const SServedCamera& camera);

/**
 * The words of the bootstrap registers, as the standard lays them out. It knows what exists and what may be written,
 * not what writing does. Threads: one at a time.
 */
class GIGESERVER_TEST_EXPORT CBootstrap
{
public:
    CBootstrap(const SServedCamera& camera, const std::string& url);

    bool Exists(std::uint32_t address) const { return m_words.count(address) != 0; }
    bool IsWritable(std::uint32_t address) const;
    /** 0 where there is no register. */
    std::uint32_t Get(std::uint32_t address) const;
    /** Past the access rules. */
    void Set(std::uint32_t address, std::uint32_t value);
    void SetAddress(const SAddress& address);

private:
    struct SWord
    {
        std::uint32_t value = 0;
        bool isWritable = false;
    };
    void Add(std::uint32_t address, std::uint32_t value) { m_words[address] = {value, false}; }
    void AddWritable(std::uint32_t address, std::uint32_t value) { m_words[address] = {value, true}; }
    void AddText(std::uint32_t address, std::size_t bytes, const std::string& text);
    void AddIdentity(const SServedCamera& camera, const std::string& url);
    void AddCapabilities(const SServedCamera& camera);
    void AddChannels();

    std::map<std::uint32_t, SWord> m_words;
};

} // namespace GigEServer::Internal
