// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/cameraport.h"
#include "transports/gige/internal/registerreader.h"

#include <memory>
#include <string>

namespace Velmo::GigE::Internal
{

/**
 * The registers of a camera that another application controls: read only, by requests of our own.
 *
 * The register of the control privilege is never read, for some cameras take a read of it for the sign of life of the
 * controlling application. Memory is the camera's: big-endian.
 * Errors: AccessException (a write, the control privilege, refused by the camera), TimeoutException (no answer),
 * RuntimeException; each text names camera, address and length.
 * Threads: any; accesses come one after the other.
 */
class GIGE_TEST_EXPORT CMonitorPort : public ACameraPort
{
public:
    /** Throws RuntimeException when the adapter's address cannot be used. Addresses in host byte order. */
    CMonitorPort(std::string cameraName, std::uint32_t adapterIp, std::uint32_t deviceIp,
                 std::shared_ptr<CRemoval> pRemoval);
    ~CMonitorPort() override;

    GenApi::EAccessMode GetAccessMode() const override { return GenApi::EAccessMode::RO; }
    void Write(const void* buffer, std::int64_t address, std::int64_t length) override;
    GenICam::gcstring GetWriteRefusal() const override;

private:
    void CheckRead(std::int64_t address, std::int64_t length) const override;
    void ReadWords(std::uint8_t* data, std::int64_t address, std::int64_t length) override;
    void WriteWords(const std::uint8_t* data, std::int64_t address, std::int64_t length) override;
    [[noreturn]] void Throw(const std::string& what, ERequest result, std::uint16_t status) const;

    CRegisterReader m_reader;
};

} // namespace Velmo::GigE::Internal
