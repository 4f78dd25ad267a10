// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodes.h"
#include "transports/gige/gige_testexport.h"
#include "transports/gige/internal/removal.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

namespace Velmo::GigE::Internal
{

/**
 * A camera's registers, of which the protocol knows whole words only: what begins or ends within one is read and
 * written with it. Memory is the camera's: big-endian.
 *
 * Errors: AccessException (outside of the address space, refused), TimeoutException, RuntimeException; each text names
 * camera, address and length. Threads: any; accesses come one after the other.
 */
class GIGE_TEST_EXPORT ACameraPort : public GenApi::IPort
{
public:
    ~ACameraPort() override;

    void Read(void* buffer, std::int64_t address, std::int64_t length) override;
    void Write(const void* buffer, std::int64_t address, std::int64_t length) override;
    std::uint32_t ReadRegister(std::uint32_t address);
    /** This program's own write, which does not go through a Write that is overridden. */
    void WriteRegister(std::uint32_t address, std::uint32_t value);

protected:
    static constexpr std::int64_t Word = 4;

    ACameraPort(std::string cameraName, std::shared_ptr<CRemoval> pRemoval);
    const std::string& CameraName() const { return m_cameraName; }
    std::string Describe(const char* access, std::int64_t address, std::int64_t length) const;
    /** Throws when that access is none; the range is in the address space already. */
    virtual void CheckRead(std::int64_t address, std::int64_t length) const;
    virtual void ReadWords(std::uint8_t* data, std::int64_t address, std::int64_t length) = 0;
    virtual void WriteWords(const std::uint8_t* data, std::int64_t address, std::int64_t length) = 0;

private:
    void Check(const char* access, std::int64_t address, std::int64_t length) const;

    const std::string m_cameraName;
    const std::shared_ptr<CRemoval> m_pRemoval;
    std::mutex m_mutex; // one access at a time; a write may have to read first
};

} // namespace Velmo::GigE::Internal
