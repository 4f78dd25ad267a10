// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/firmwarefileio.h"

#include "genapi/exceptions.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace GenApi
{
namespace Internal
{

std::string LoadWholeFile(const std::string& title, const std::string& fileName, std::size_t maxBytes)
{
    std::error_code error;
    const std::filesystem::path path(fileName);
    if (!std::filesystem::exists(path, error))
    {
        GENICAM_THROW(FileNotFoundException, title + " does not exist");
    }
    // A pipe or a device would be read for ever.
    if (!std::filesystem::is_regular_file(path, error))
    {
        GENICAM_THROW(FileIOException, title + " is no regular file");
    }
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file)
    {
        GENICAM_THROW(FileIOException, title + " cannot be opened: " + std::strerror(errno));
    }
    std::string bytes;
    std::string part(std::size_t{1} << 20, '\0');
    while (file)
    {
        file.read(part.data(), static_cast<std::streamsize>(part.size()));
        bytes.append(part, 0, static_cast<std::size_t>(file.gcount()));
        if (bytes.size() > maxBytes)
        {
            GENICAM_THROW(OutOfRangeException, title + " is larger than " + std::to_string(maxBytes) + " bytes");
        }
    }
    if (file.bad())
    {
        GENICAM_THROW(FileIOException, title + " cannot be read: " + std::strerror(errno));
    }
    return bytes;
}

std::string FirmwarePartName(const std::string& fileName)
{
    return fileName + ".part";
}

void SaveWholeFile(const std::string& title, const std::string& fileName, const std::string& bytes)
{
    const std::string partName = FirmwarePartName(fileName);
    errno = 0;
    std::ofstream file(partName, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    const bool isWritten = !file.fail();
    if (isWritten && std::rename(partName.c_str(), fileName.c_str()) == 0)
    {
        return;
    }
    const std::string reason = std::strerror(errno);
    std::error_code error;
    std::filesystem::remove(partName, error);
    GENICAM_THROW(FileIOException, title + " cannot be written: " + reason);
}

} // namespace Internal
} // namespace GenApi
