// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/firmwarepackagewriter.h"

#include "genapi/internal/firmwarearchive.h"
#include "genapi/internal/firmwarearchivewriter.h"
#include "genapi/internal/firmwarechecksum.h"
#include "genapi/internal/firmwarecontrolreader.h"
#include "genapi/internal/firmwarefileio.h"
#include "genapi/internal/firmwarepackage.h"

#include <pugixml.hpp>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace GenApi
{
namespace
{

using namespace Internal;

/** Fills in what the maker left out and loads the payload. */
class CPackageBuilder
{
public:
    CPackageBuilder(std::string controlName, const SFirmwareLimits& limits)
        : m_controlName(std::move(controlName)), m_title("The control file '" + m_controlName + "'"), m_limits(limits)
    {
    }

    std::string Build()
    {
        const std::string xml = LoadWholeFile(m_title, m_controlName, m_limits.controlBytes);
        const pugi::xml_parse_result result = m_document.load_buffer(
            xml.data(), xml.size(), pugi::parse_full | pugi::parse_ws_pcdata, pugi::encoding_utf8);
        if (!result)
        {
            GENICAM_THROW(FormatException, m_title + " is no well-formed XML: " + result.description() + " at offset " +
                                               std::to_string(result.offset));
        }
        for (const pugi::xml_node file : m_document.document_element().child("Files").children("File"))
        {
            AddFile(file);
        }
        std::ostringstream filled;
        m_document.save(filled, "", pugi::format_raw, pugi::encoding_utf8);
        ReadFirmwareControl(m_title, filled.str(), m_limits); // its messages name the maker's own file
        FirmwareArchiveFiles files{{FirmwareControlName, filled.str()}};
        files.insert(files.end(), m_payload.begin(), m_payload.end());
        return WriteFirmwareArchive({{FirmwareInnerName, WriteFirmwareArchive(files, true)}}, false);
    }

    /** After Build(). The package must not take the place of a file that it is made of. */
    void CheckTarget(const std::string& packageName) const
    {
        for (const std::string& input : m_inputs)
        {
            for (const std::string& written : {packageName, FirmwarePartName(packageName)})
            {
                std::error_code error; // what does not exist is no file of these
                if (std::filesystem::equivalent(input, written, error))
                {
                    GENICAM_THROW(InvalidArgumentException, "The firmware package '" + packageName +
                                                                "' would overwrite the file '" + input +
                                                                "', of which it is made; give it another name");
                }
            }
        }
    }

private:
    void AddFile(pugi::xml_node file)
    {
        const std::string name = file.attribute("name").value();
        if (const std::string fault = FirmwareNameFault(name, m_limits); !fault.empty())
        {
            GENICAM_THROW(FormatException, m_title + ": " + fault);
        }
        const std::filesystem::path path = std::filesystem::path(m_controlName).parent_path() / name;
        m_inputs.push_back(path.string());
        const std::string title =
            "The file '" + path.string() + "', which the control file '" + m_controlName + "' lists,";
        m_payload.emplace_back(name, LoadWholeFile(title, path.string(), m_limits.payloadBytes));
        Fill(file, "size", std::to_string(m_payload.back().second.size()));
        Fill(file, "sha256", Sha256(m_payload.back().second));
    }

    void Fill(pugi::xml_node file, const char* name, const std::string& value)
    {
        if (!file.attribute(name))
        {
            file.append_attribute(name) = value.c_str();
        }
        else if (value != file.attribute(name).value())
        {
            GENICAM_THROW(FormatException, m_title + " says that '" + name + "' of the file '" +
                                               file.attribute("name").value() + "' is '" +
                                               file.attribute(name).value() + "'; it is '" + value +
                                               "'. Leave it out to have it filled in");
        }
    }

    const std::string m_controlName;
    const std::string m_title;
    const SFirmwareLimits& m_limits;
    pugi::xml_document m_document;
    FirmwareArchiveFiles m_payload;
    std::vector<std::string> m_inputs{m_controlName}; // names of the files that were read
};

} // namespace

void CFirmwarePackageWriter::WritePackage(const char* controlFileName, const char* packageFileName) const
{
    const std::string controlName = controlFileName == nullptr ? "" : controlFileName;
    const std::string packageName = packageFileName == nullptr ? "" : packageFileName;
    if (controlName.empty() || packageName.empty())
    {
        GENICAM_THROW(InvalidArgumentException, "Both the control file and the firmware package need a name");
    }
    const SFirmwareLimits limits;
    CPackageBuilder builder(controlName, limits);
    const std::string package = builder.Build();
    builder.CheckTarget(packageName);
    ReadFirmwarePackage(packageName, package, limits);
    SaveWholeFile("The firmware package '" + packageName + "'", packageName, package);
}

} // namespace GenApi
