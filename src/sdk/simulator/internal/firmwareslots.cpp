// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/internal/firmwareslots.h"

#include "genapi/exceptions.h"
#include "simulator/firmware.h"

namespace Simulator::Internal
{

std::string CFirmwareSlots::FindFlaw() const
{
    try
    {
        const std::vector<std::uint8_t>& image = m_flash.Inactive().image;
        const SFirmwareImage firmware = DecodeFirmware(image.data(), image.size());
        return firmware.modelName == m_config.modelName
                   ? std::string()
                   : "The firmware image is for '" + firmware.modelName + "', not for '" + m_config.modelName + "'.";
    }
    catch (const GenICam::InvalidArgumentException& error)
    {
        return error.GetDescription();
    }
}

std::string CFirmwareSlots::Boot()
{
    if (m_flash.status == EFirmwareStatus::Receiving)
    {
        m_flash.status = EFirmwareStatus::Invalid;
    }
    else if (m_flash.status == EFirmwareStatus::ActivationPending)
    {
        m_flash.status = EFirmwareStatus::Invalid; // unless it boots
        SFirmwareSlot& slot = m_flash.Inactive();
        if (FindFlaw().empty())
        {
            const SFirmwareImage firmware = DecodeFirmware(slot.image.data(), slot.image.size());
            if (!firmware.failsToBoot)
            {
                slot.version = firmware.version;
                m_flash.activeSlot = 1 - m_flash.activeSlot;
                m_flash.status = EFirmwareStatus::Idle;
            }
        }
    }
    const std::string& version = m_flash.Active().version;
    return version.empty() ? m_config.firmwareVersion : version;
}

void CFirmwareSlots::BeginUpload(bool isContinued)
{
    if (!isContinued)
    {
        m_flash.Inactive() = SFirmwareSlot();
    }
    m_flash.status = EFirmwareStatus::Receiving;
}

bool CFirmwareSlots::EndUpload()
{
    if (m_flash.Inactive().image.empty())
    {
        m_flash.status = EFirmwareStatus::Idle;
        return true;
    }
    m_flash.status = FindFlaw().empty() ? EFirmwareStatus::Verified : EFirmwareStatus::Invalid;
    return m_flash.status == EFirmwareStatus::Verified;
}

void CFirmwareSlots::AbandonUpload()
{
    if (m_flash.status == EFirmwareStatus::Receiving)
    {
        m_flash.status = EFirmwareStatus::Invalid;
    }
}

void CFirmwareSlots::Erase()
{
    m_flash.Inactive() = SFirmwareSlot();
    m_flash.status = EFirmwareStatus::Idle;
}

void CFirmwareSlots::Activate()
{
    if (m_flash.status != EFirmwareStatus::Verified && m_flash.status != EFirmwareStatus::ActivationPending)
    {
        GENICAM_THROW(AccessException, "There is no verified firmware image to activate. Write one to the file "
                                       "'FirmwareUpdate' and close it; FirmwareStatus is then 'Verified'.");
    }
    const std::string flaw = FindFlaw();
    if (!flaw.empty())
    {
        m_flash.status = EFirmwareStatus::Invalid;
        GENICAM_THROW(AccessException, flaw);
    }
    m_flash.status = EFirmwareStatus::ActivationPending;
}

} // namespace Simulator::Internal
