// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/datareader.h"

#include "genapi/exceptions.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <initializer_list>
#include <limits>
#include <sstream>

namespace Simulator
{

namespace
{

using nlohmann::json;

constexpr std::uint32_t MaxCount = 10000;
constexpr std::size_t MaxFileBytes = 16 * 1024 * 1024;

/** One JSON object with its place in the document. */
class CObject
{
public:
    CObject(const json& value, std::string place) : m_value(value), m_place(std::move(place))
    {
        if (!value.is_object())
        {
            Refuse("", "must be an object");
        }
    }

    void AllowOnly(std::initializer_list<const char*> keys) const
    {
        for (const auto& [key, value] : m_value.items())
        {
            if (std::none_of(keys.begin(), keys.end(), [&k = key](const char* known) { return k == known; }))
            {
                Refuse(key, "is not known here");
            }
        }
    }
    bool Has(const char* key) const { return m_value.contains(key); }
    const json& At(const char* key) const { return m_value.at(key); }
    const json& Value() const { return m_value; }
    std::string Place(const std::string& key) const
    {
        return m_place.empty() ? key : key.empty() ? m_place : m_place + "." + key;
    }

    void Get(const char* key, std::string& target) const
    {
        if (Has(key))
        {
            if (!At(key).is_string())
            {
                Refuse(key, "must be a text");
            }
            target = At(key).get<std::string>();
        }
    }
    void Get(const char* key, bool& target) const
    {
        if (Has(key))
        {
            if (!At(key).is_boolean())
            {
                Refuse(key, "must be true or false");
            }
            target = At(key).get<bool>();
        }
    }
    void Get(const char* key, double& target) const
    {
        if (Has(key))
        {
            if (!At(key).is_number() || !std::isfinite(At(key).get<double>()))
            {
                Refuse(key, "must be a number");
            }
            target = At(key).get<double>();
        }
    }
    void Get(const char* key, std::uint32_t& target) const
    {
        if (Has(key))
        {
            const json& value = At(key);
            if (!value.is_number_unsigned() || value.get<std::uint64_t>() > std::numeric_limits<std::uint32_t>::max())
            {
                Refuse(key, "must be a whole number from 0 to 4294967295");
            }
            target = value.get<std::uint32_t>();
        }
    }
    void Get(const char* key, std::int64_t& target) const
    {
        if (Has(key))
        {
            const json& value = At(key);
            const bool fits = value.is_number_integer() &&
                              (!value.is_number_unsigned() ||
                               value.get<std::uint64_t>() <= std::uint64_t{std::numeric_limits<std::int64_t>::max()});
            if (!fits)
            {
                Refuse(key, "must be a whole number of 64 bits");
            }
            target = value.get<std::int64_t>();
        }
    }
    void Get(const char* key, std::vector<std::string>& target) const
    {
        if (!Has(key))
        {
            return;
        }
        const json& value = At(key);
        if (!value.is_array() || std::any_of(value.begin(), value.end(), [](const json& v) { return !v.is_string(); }))
        {
            Refuse(key, "must be a list of texts");
        }
        target = value.get<std::vector<std::string>>();
    }

    [[noreturn]] void Refuse(const std::string& key, const std::string& what) const
    {
        const std::string place = Place(key);
        GENICAM_THROW(InvalidArgumentException, (place.empty() ? "The data" : "'" + place + "'") + " " + what + ".");
    }

private:
    const json& m_value;
    const std::string m_place;
};

void ReadFeatures(const CObject& object, std::map<std::string, std::string>& features)
{
    for (const auto& [name, value] : object.Value().items())
    {
        if (value.is_string())
        {
            features[name] = value.get<std::string>();
        }
        else if (value.is_boolean() || value.is_number())
        {
            features[name] = value.dump();
        }
        else
        {
            object.Refuse(name, "must be a text, a number, true or false");
        }
    }
}

void ReadAfterReset(const CObject& object, EAfterReset& afterReset)
{
    constexpr auto Key = "afterReset";
    std::string text = "same";
    object.Get(Key, text);
    const std::optional<EAfterReset> found = FindAfterReset(text);
    if (!found.has_value())
    {
        object.Refuse(Key, "must be \"same\", \"never\", \"twice\" or \"otherSerial\"");
    }
    afterReset = *found;
}

void ReadFaults(const CObject& object, Simulator::SFaults& faults)
{
    object.AllowOnly({"dropFrames", "failEveryNth", "stall", "refuseOpenOwner", "readError", "writeError",
                      "brokenDescription", "discoveryDelayMs", "chunkLies", "chunkMissing", "removalReports",
                      "powerLossAtFileOperation", "powerLossAtWrite", "fileFailure", "fileShortWrite", "fileDelayMs",
                      "afterReset"});
    object.Get("dropFrames", faults.dropFrames);
    object.Get("failEveryNth", faults.failEveryNth);
    object.Get("stall", faults.stall);
    object.Get("refuseOpenOwner", faults.refuseOpenOwner);
    object.Get("readError", faults.readError);
    object.Get("writeError", faults.writeError);
    object.Get("brokenDescription", faults.brokenDescription);
    object.Get("discoveryDelayMs", faults.discoveryDelayMs);
    object.Get("chunkLies", faults.chunkLies);
    object.Get("chunkMissing", faults.chunkMissing);
    object.Get("removalReports", faults.removalReports);
    object.Get("powerLossAtFileOperation", faults.powerLossAtFileOperation);
    object.Get("powerLossAtWrite", faults.powerLossAtWrite);
    object.Get("fileFailure", faults.fileFailure);
    object.Get("fileShortWrite", faults.fileShortWrite);
    object.Get("fileDelayMs", faults.fileDelayMs);
    ReadAfterReset(object, faults.afterReset);
}

SCameraConfig ReadCamera(const CObject& object)
{
    object.AllowOnly({"count", "vendor", "model", "serial", "userName", "version", "firmware", "interface", "sensor",
                      "pixelFormats", "frameRate", "maxBytesPerSecond", "clockOffsetNs", "clockDriftPpm", "bootTimeMs",
                      "firmwareBootTimeMs", "features", "faults"});
    if (!object.Has("serial"))
    {
        object.Refuse("serial", "is missing");
    }
    SCameraConfig camera;
    object.Get("vendor", camera.vendorName);
    object.Get("model", camera.modelName);
    object.Get("serial", camera.serialNumber);
    object.Get("userName", camera.userDefinedName);
    object.Get("version", camera.deviceVersion);
    object.Get("firmware", camera.firmwareVersion);
    object.Get("interface", camera.interfaceId);
    object.Get("pixelFormats", camera.pixelFormats);
    object.Get("frameRate", camera.frameRate);
    object.Get("maxBytesPerSecond", camera.maxBytesPerSecond);
    object.Get("clockOffsetNs", camera.clockOffsetNs);
    object.Get("clockDriftPpm", camera.clockDriftPpm);
    object.Get("bootTimeMs", camera.bootTimeMs);
    if (object.Has("firmwareBootTimeMs"))
    {
        object.Get("firmwareBootTimeMs", camera.firmwareBootTimeMs.emplace());
    }
    if (object.Has("sensor"))
    {
        const CObject sensor(object.At("sensor"), object.Place("sensor"));
        sensor.AllowOnly({"width", "height"});
        sensor.Get("width", camera.sensorWidth);
        sensor.Get("height", camera.sensorHeight);
    }
    if (object.Has("features"))
    {
        ReadFeatures(CObject(object.At("features"), object.Place("features")), camera.features);
    }
    if (object.Has("faults"))
    {
        ReadFaults(CObject(object.At("faults"), object.Place("faults")), camera.faults);
    }
    return camera;
}

/** A camera with "count" stands for that many, numbered in serial number and clock. */
void AddCameras(const CObject& object, std::vector<SCameraConfig>& cameras)
{
    const SCameraConfig camera = ReadCamera(object);
    if (!object.Has("count"))
    {
        cameras.push_back(camera);
        return;
    }
    std::uint32_t count = 0;
    object.Get("count", count);
    if (count > MaxCount || cameras.size() + count > MaxCount)
    {
        object.Refuse("count", "makes more than " + std::to_string(MaxCount) + " cameras");
    }
    for (std::uint32_t i = 0; i < count; ++i)
    {
        cameras.push_back(camera);
        char number[16];
        std::snprintf(number, sizeof number, "-%04u", i + 1);
        cameras.back().serialNumber += number;
    }
}

const json& ArrayAt(const CObject& root, const char* key)
{
    if (!root.At(key).is_array())
    {
        root.Refuse(key, "must be a list");
    }
    return root.At(key);
}

json Parse(std::string_view text)
{
    try
    {
        return json::parse(text.begin(), text.end());
    }
    catch (const json::exception& error)
    {
        GENICAM_THROW(FormatException, std::string("Not valid JSON: ") + error.what());
    }
}

} // namespace

SRackData ReadData(std::string_view text)
{
    const json document = Parse(text);
    const CObject root(document, "");
    root.AllowOnly({"interfaces", "cameras"});
    SRackData data = MakeDefaultData(0);
    if (root.Has("interfaces"))
    {
        data.interfaces.clear();
        std::size_t index = 0;
        for (const json& value : ArrayAt(root, "interfaces"))
        {
            const CObject object(value, "interfaces[" + std::to_string(index++) + "]");
            object.AllowOnly({"id", "name"});
            SInterfaceData interface;
            object.Get("id", interface.id);
            object.Get("name", interface.name);
            data.interfaces.push_back(interface);
        }
    }
    if (!root.Has("cameras"))
    {
        root.Refuse("cameras", "is missing");
    }
    std::size_t index = 0;
    for (const json& value : ArrayAt(root, "cameras"))
    {
        AddCameras(CObject(value, "cameras[" + std::to_string(index++) + "]"), data.cameras);
    }
    CheckData(data);
    return data;
}

std::string ReadFile(const std::string& fileName)
{
    std::ifstream file(fileName, std::ios::binary);
    if (!file)
    {
        GENICAM_THROW(FileNotFoundException, "Cannot open '" + fileName + "': " + std::strerror(errno) + ".");
    }
    std::string text(MaxFileBytes + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    if (file.bad() || text.size() > MaxFileBytes)
    {
        GENICAM_THROW(FileIOException, "Cannot read '" + fileName + "', or it is longer than " +
                                           std::to_string(MaxFileBytes) + " bytes.");
    }
    return text;
}

} // namespace Simulator
