// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "firmwarecamera.h"

#include "genapi/internal/firmwarechecksum.h"
#include "genapi/internal/firmwarelimits.h"
#include "genapi/internal/firmwarerun.h"

#include <gtest/gtest.h>
#include <zip.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

/** A file of an archive, in the way the test wants it. */
struct SZipFile
{
    std::string name;
    std::string bytes;
    zip_int32_t method = ZIP_CM_DEFLATE;
    zip_uint16_t encryption = ZIP_EM_NONE;
};

/** A ZIP archive of these files. */
inline std::string MakeZip(const std::vector<SZipFile>& files)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* const target = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_source_keep(target);
    zip_t* const archive = zip_open_from_source(target, ZIP_TRUNCATE, &error);
    for (const SZipFile& file : files)
    {
        zip_source_t* const source = zip_source_buffer(archive, file.bytes.data(), file.bytes.size(), 0);
        const zip_int64_t index = zip_file_add(archive, file.name.c_str(), source, ZIP_FL_ENC_UTF_8);
        if (index < 0 || zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), file.method, 0) != 0 ||
            (file.encryption != ZIP_EM_NONE &&
             zip_file_set_encryption(archive, static_cast<zip_uint64_t>(index), file.encryption, "secret") != 0))
        {
            throw std::runtime_error("cannot add " + file.name);
        }
    }
    if (zip_close(archive) != 0)
    {
        throw std::runtime_error("cannot make the archive");
    }
    zip_source_open(target);
    zip_source_seek(target, 0, SEEK_END);
    std::string bytes(static_cast<std::size_t>(zip_source_tell(target)), '\0');
    zip_source_seek(target, 0, SEEK_SET);
    zip_source_read(target, bytes.data(), bytes.size());
    zip_source_close(target);
    zip_source_free(target);
    return bytes;
}

/** What changes from test to test of a control file. */
struct SControlParts
{
    std::string files;
    std::string preconditions;
    std::string steps;
    std::string updates;
};

constexpr char MainFile[] = "main.bin";

inline std::string FileElement(const std::string& name, const std::string& bytes)
{
    return "<File name=\"" + name + "\" size=\"" + std::to_string(bytes.size()) + "\" sha256=\"" +
           GenApi::Internal::Sha256(bytes) + "\"/>\n";
}

/** New firmware of a size that no block of the camera divides. */
inline std::string MainBytes()
{
    std::string bytes = "FW:2.1.0\n";
    for (int i = 0; bytes.size() < 1003; ++i)
    {
        bytes += static_cast<char>(i * 7 + i / 256);
    }
    return bytes;
}

inline std::string ControlXml(const SControlParts& parts)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<FirmwarePackage xmlns=\"urn:camerapool:firmwarepackage\" version=\"1.0\">\n<Files>\n" +
           parts.files + "</Files>\n<Procedures>\n<Procedure id=\"main\">\n<Preconditions>" + parts.preconditions +
           "</Preconditions>\n<Steps>\n" + parts.steps + "</Steps>\n</Procedure>\n</Procedures>\n<Updates>\n" +
           parts.updates + "</Updates>\n</FirmwarePackage>\n";
}

/** An update of every kind of step, which works. */
inline SControlParts GoodParts()
{
    SControlParts parts;
    parts.files = FileElement(MainFile, MainBytes());
    parts.preconditions = "<FeatureAssert feature=\"DeviceTemperature\" max=\"70\"/>";
    parts.steps =
        "<FeatureWrite feature=\"UpdateMode\" value=\"1\"/>\n"
        "<FileUpload file=\"main.bin\" deviceFile=\"FirmwareUpdate\">"
        "<Description><Text>Uploading</Text><Text language=\"de\">Hochladen</Text></Description></FileUpload>\n"
        "<FeatureExecute feature=\"FirmwareActivate\" timeoutMs=\"1000\" activates=\"true\"/>\n"
        "<DeviceReset expectedTimeMs=\"3000\" waitTimeMs=\"500\"/>\n"
        "<FeatureAssert feature=\"DeviceFirmwareVersion\" matches=\"Fw 2\\.1\\.0 .*\" timeoutMs=\"1000\"/>\n";
    parts.updates = "<Update id=\"testcam-2.1.0\" procedure=\"main\">\n"
                    "<Condition feature=\"DeviceModelName\" matches=\"Testcam [0-9]+\"/>\n"
                    "<Info key=\"Version\"><Text>2.1.0</Text></Info>\n"
                    "<Info key=\"Description\"><Text>Better</Text><Text language=\"de\">Besser</Text></Info>\n"
                    "<DeviceVersion pattern=\"Fw ([0-9.]+) build [0-9]+\"/>\n</Update>\n";
    return parts;
}

inline std::string MakePackage(const std::string& control, const std::vector<SZipFile>& payload)
{
    std::vector<SZipFile> files{{"control.xml", control}};
    files.insert(files.end(), payload.begin(), payload.end());
    return MakeZip({{"package.zip", MakeZip(files), ZIP_CM_STORE}});
}

inline std::string MakePackage(const SControlParts& parts)
{
    return MakePackage(ControlXml(parts), {{MainFile, MainBytes()}});
}

/** A folder of the test's own. */
class CScratchFolder
{
public:
    CScratchFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "firmwaretestXXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
        {
            throw std::runtime_error("no scratch folder");
        }
        m_path = pattern;
    }
    ~CScratchFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }
    CScratchFolder(const CScratchFolder&) = delete;
    CScratchFolder& operator=(const CScratchFolder&) = delete;

    std::string Path(const std::string& name) const { return (m_path / name).string(); }
    std::string Write(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(Path(name), std::ios::binary) << bytes;
        return Path(name);
    }

private:
    std::filesystem::path m_path;
};

class CUpdateList : public GenApi::IFirmwareUpdateInfoCollector
{
public:
    ~CUpdateList() override = default;
    bool OnUpdateRead(const GenApi::CFirmwareUpdateInfo& updateInfo) override
    {
        updates.push_back(updateInfo);
        return updates.size() < atMost;
    }
    std::vector<GenApi::CFirmwareUpdateInfo> updates;
    std::size_t atMost = 1000;
};

/** Applies updates to the camera, without a wait by the clock. */
class CFirmwareApplyTest : public ::testing::Test
{
protected:
    /** The first update of a package of these parts. */
    GenApi::CFirmwareUpdateInfo Load(const SControlParts& parts) { return Load(MakePackage(parts)); }
    GenApi::CFirmwareUpdateInfo Load(const std::string& package)
    {
        CUpdateList list;
        GenApi::CFirmwareUpdater().ReadFirmwareUpdateInfos(folder.Write("test.guf", package).c_str(), list);
        return list.updates.at(0);
    }
    void Apply(const GenApi::CFirmwareUpdateInfo& update)
    {
        GenApi::Internal::RunFirmwareUpdate(update, device, &observer, clock, GenApi::Internal::SFirmwareLimits());
    }
    /** The text of the GenICam exception that applying throws; empty when it throws none. */
    std::string Failure(const GenApi::CFirmwareUpdateInfo& update)
    {
        try
        {
            Apply(update);
        }
        catch (const GenICam::GenericException& e)
        {
            return e.GetDescription();
        }
        return {};
    }
    std::string FailureOf(const std::string& steps)
    {
        SControlParts parts = GoodParts();
        parts.steps = steps;
        return Failure(Load(parts));
    }

    CScratchFolder folder;
    CFirmwareCamera camera;
    CFirmwareDevice device{camera};
    CRecordingObserver observer;
    CTestClock clock;
};
