// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/inodemap.h"
#include "genapi/internal/descriptionreader.h"
#include "genapi/internal/nodemap.h"
#include "genapi/internal/unpack.h"

#include <fstream>
#include <iterator>
#include <string_view>
#include <unordered_map>

namespace GenApi
{

struct CNodeMapFactory::SPrivate
{
    std::shared_ptr<const Internal::SDescription> description;
};

namespace
{

using DescriptionPtr = std::shared_ptr<const Internal::SDescription>;

/** Parsed descriptions by the bytes they were made from. */
class CDescriptionCache
{
public:
    static CDescriptionCache& Instance()
    {
        static CDescriptionCache cache;
        return cache;
    }

    DescriptionPtr Get(std::string_view bytes)
    {
        const std::size_t hash = std::hash<std::string_view>()(bytes);
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            if (DescriptionPtr known = Find(hash, bytes))
            {
                return known;
            }
        }
        // Parsed outside the lock: other descriptions need not wait. Two threads with the same new one share the first.
        DescriptionPtr description = Internal::ReadDescription(Internal::UnpackDescription(bytes));
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (DescriptionPtr known = Find(hash, bytes))
        {
            return known;
        }
        m_entries.emplace(hash, SEntry{std::string(bytes), description});
        return description;
    }

    void Clear()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_entries.clear();
    }

    std::size_t Size()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_entries.size();
    }

private:
    struct SEntry
    {
        std::string bytes;
        DescriptionPtr description;
    };

    DescriptionPtr Find(std::size_t hash, std::string_view bytes) const
    {
        const auto range = m_entries.equal_range(hash);
        for (auto entry = range.first; entry != range.second; ++entry)
        {
            if (entry->second.bytes == bytes)
            {
                return entry->second.description;
            }
        }
        return nullptr;
    }

    std::mutex m_mutex; // guards the map; nothing is called with it held
    std::unordered_multimap<std::size_t, SEntry> m_entries;
};

} // namespace

CNodeMapFactory::CNodeMapFactory(std::shared_ptr<const SPrivate> p) : m_p(std::move(p)) {}

CNodeMapFactory::CNodeMapFactory(const CNodeMapFactory&) = default;
CNodeMapFactory& CNodeMapFactory::operator=(const CNodeMapFactory&) = default;
CNodeMapFactory::~CNodeMapFactory() = default;

CNodeMapFactory CNodeMapFactory::FromData(const void* data, std::size_t bytes)
{
    const std::string_view view(static_cast<const char*>(data), data == nullptr ? 0 : bytes);
    return CNodeMapFactory(std::make_shared<const SPrivate>(SPrivate{CDescriptionCache::Instance().Get(view)}));
}

CNodeMapFactory CNodeMapFactory::FromFile(const GenICam::gcstring& fileName)
{
    std::ifstream file(fileName.str(), std::ios::binary | std::ios::ate);
    if (!file)
    {
        GENICAM_THROW(FileNotFoundException, "The device description '" + fileName.str() + "' cannot be opened");
    }
    const std::streamoff size = file.tellg();
    if (size < 0 || static_cast<std::uint64_t>(size) > Internal::MaxDescriptionBytes)
    {
        GENICAM_THROW(FileIOException,
                      "The device description '" + fileName.str() + "' cannot be read or is too large");
    }
    std::string bytes(static_cast<std::size_t>(size), '\0');
    file.seekg(0);
    if (size > 0 && !file.read(bytes.data(), size))
    {
        GENICAM_THROW(FileIOException, "The device description '" + fileName.str() + "' cannot be read");
    }
    return FromData(bytes.data(), bytes.size());
}

std::unique_ptr<INodeMap> CNodeMapFactory::CreateNodeMap(const GenICam::gcstring& deviceName) const
{
    return std::make_unique<Internal::CNodeMap>(m_p->description, deviceName.str());
}

void CNodeMapFactory::ClearCache()
{
    CDescriptionCache::Instance().Clear();
}

std::size_t CNodeMapFactory::CacheSize()
{
    return CDescriptionCache::Instance().Size();
}

} // namespace GenApi
