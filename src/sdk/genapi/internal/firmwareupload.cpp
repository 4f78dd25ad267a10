// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/firmwareupload.h"

#include "genapi/internal/firmwarechecksum.h"
#include "genapi/internal/firmwarefile.h"

#include <algorithm>

namespace GenApi
{
namespace Internal
{
namespace
{

constexpr std::int64_t RetryPauseMs = 200;

/** Counts bytes written and read back as one hundred per cent. */
class CUploadProgress
{
public:
    CUploadProgress(std::uint64_t totalBytes, const FirmwareProgress& progress)
        : m_total(totalBytes), m_progress(progress)
    {
    }

    void Add(std::uint64_t bytes)
    {
        m_done += bytes;
        const double percent = 100.0 * static_cast<double>(m_done) / static_cast<double>(m_total);
        if (percent - m_reported >= 1.0 || m_done == m_total)
        {
            m_reported = percent;
            m_progress(std::min(percent, 100.0));
        }
    }

private:
    const std::uint64_t m_total;
    const FirmwareProgress& m_progress;
    std::uint64_t m_done = 0;
    double m_reported = 0;
};

class CUpload
{
public:
    CUpload(const SFirmwareStep& step, std::string_view bytes, INodeMap& nodeMap, IFirmwareClock& clock,
            const FirmwareProgress& progress)
        : m_step(step), m_bytes(bytes), m_nodeMap(nodeMap), m_clock(clock),
          m_file(nodeMap, step.deviceFile, step.timeoutMs, clock), m_readsBack(ReadsBack()),
          m_progress(std::max<std::uint64_t>(bytes.size() * (m_readsBack ? 2 : 1), 1), progress)
    {
    }

    SFirmwareUploadResult Run()
    {
        const std::uint64_t kept = KeptBytes();
        if (kept > 0)
        {
            m_file.OpenForContinuing();
        }
        else
        {
            m_file.OpenForWriting();
        }
        m_file.CheckSize(m_bytes.size());
        // Opening may have emptied it all the same.
        const std::uint64_t begin = kept > 0 && m_file.Size() == kept ? kept : 0;
        m_progress.Add(begin);
        const std::int64_t since = m_clock.NowMs();
        for (std::uint64_t offset = begin; offset < m_bytes.size();)
        {
            const std::size_t taken = WriteBlock(offset);
            offset += taken;
            m_progress.Add(taken);
        }
        m_file.Close();
        const SFirmwareUploadResult result{m_bytes.size() - begin, m_clock.NowMs() - since};
        Verify();
        return result;
    }

private:
    bool ReadsBack()
    {
        return m_step.verify == EFirmwareVerify::ReadBack ||
               (m_step.verify == EFirmwareVerify::IfReadable && m_file.CanBeRead());
    }

    /** Calls again what fails without the device having refused it. */
    template <class Access> auto Repeat(Access access)
    {
        for (int attempt = 1;; ++attempt)
        {
            try
            {
                return access();
            }
            catch (const GenICam::AccessException&)
            {
                PauseOrGiveUp(attempt);
            }
            catch (const GenICam::TimeoutException&)
            {
                PauseOrGiveUp(attempt);
            }
        }
    }

    /** Inside a handler: throws on what it handles when enough was tried. */
    void PauseOrGiveUp(int attempt)
    {
        if (attempt == MaxBlockTries)
        {
            throw;
        }
        m_clock.PassMs(RetryPauseMs);
    }

    /** The same bytes at the same offset do no harm when the device had taken them before the access failed. */
    std::size_t WriteBlock(std::uint64_t offset)
    {
        return Repeat([&] { return m_file.WriteBlock(offset, m_bytes.substr(static_cast<std::size_t>(offset))); });
    }

    /** How many bytes of ours are in the device's file already; 0 unless the device tells and they can be compared. */
    std::uint64_t KeptBytes()
    {
        if (!m_readsBack)
        {
            return 0;
        }
        const std::uint64_t size = m_file.Size().value_or(0);
        if (size == 0 || size > m_bytes.size())
        {
            return 0;
        }
        try
        {
            m_file.OpenForReading();
            const bool isOurs = FirstDifference(size, [](std::uint64_t) {}) == size;
            m_file.Close();
            return isOurs ? size : 0;
        }
        catch (const GenICam::GenericException&)
        {
            // What cannot be read is written from the beginning.
            m_file.CloseQuietly();
            return 0;
        }
    }

    /** The offset of the first byte that differs, or the size. The file is open for reading. */
    template <class Report> std::uint64_t FirstDifference(std::uint64_t size, Report report)
    {
        for (std::uint64_t offset = 0; offset < size;)
        {
            const std::string there =
                Repeat([&] { return m_file.ReadBlock(offset, static_cast<std::size_t>(size - offset)); });
            const std::string_view ours = m_bytes.substr(static_cast<std::size_t>(offset), there.size());
            const auto differing = std::mismatch(there.begin(), there.end(), ours.begin()).first;
            if (differing != there.end())
            {
                return offset + static_cast<std::uint64_t>(differing - there.begin());
            }
            offset += there.size();
            report(there.size());
        }
        return size;
    }

    void Verify()
    {
        const std::uint64_t size = m_file.Size().value_or(m_bytes.size());
        if (size != m_bytes.size())
        {
            GENICAM_THROW(RuntimeException, "The camera's file '" + m_step.deviceFile + "' has " +
                                                std::to_string(size) + " bytes after the upload of " +
                                                std::to_string(m_bytes.size()));
        }
        if (m_step.verify == EFirmwareVerify::Crc32)
        {
            VerifyChecksum();
        }
        else if (m_readsBack && !m_bytes.empty())
        {
            m_file.OpenForReading();
            const std::uint64_t same = FirstDifference(size, [this](std::uint64_t bytes) { m_progress.Add(bytes); });
            m_file.Close();
            if (same != size)
            {
                GENICAM_THROW(RuntimeException, "The camera's file '" + m_step.deviceFile +
                                                    "' differs from what was uploaded, at offset " +
                                                    std::to_string(same));
            }
        }
    }

    void VerifyChecksum()
    {
        CIntegerPtr feature = m_nodeMap.GetNode(m_step.crcFeature);
        const std::int64_t found = feature->GetValue(false, true);
        const std::int64_t expected = Crc32(m_bytes);
        // A device may show the 32 bits with a sign.
        if ((found & 0xFFFFFFFF) != expected)
        {
            GENICAM_THROW(RuntimeException, "The camera's file '" + m_step.deviceFile +
                                                "' was not stored as uploaded: '" + m_step.crcFeature + "' is " +
                                                std::to_string(found & 0xFFFFFFFF) +
                                                ", the CRC-32 of the update's file is " + std::to_string(expected));
        }
    }

    const SFirmwareStep& m_step;
    const std::string_view m_bytes;
    INodeMap& m_nodeMap;
    IFirmwareClock& m_clock;
    CDeviceFile m_file;
    const bool m_readsBack;
    CUploadProgress m_progress;
};

} // namespace

SFirmwareUploadResult UploadFirmwareFile(const SFirmwareStep& step, std::string_view bytes, INodeMap& nodeMap,
                                         IFirmwareClock& clock, const FirmwareProgress& progress)
{
    return CUpload(step, bytes, nodeMap, clock, progress).Run();
}

} // namespace Internal
} // namespace GenApi
