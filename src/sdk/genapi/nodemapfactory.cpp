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

/** Parsed descriptions by the bytes they were made from. */
class CDescriptionCache
{
public:
    static CDescriptionCache& Instance()
    {
        static CDescriptionCache cache;
        return cache;
    }

    std::shared_ptr<const Internal::SDescription> Get(std::string_view bytes)
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            const auto known = m_descriptions.find(std::string(bytes));
            if (known != m_descriptions.end())
            {
                return known->second;
            }
        }
        // Parsed outside the lock: other descriptions need not wait. Two threads with the same new one share the first.
        auto description = Internal::ReadDescription(Internal::UnpackDescription(bytes));
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_descriptions.emplace(std::string(bytes), std::move(description)).first->second;
    }

    void Clear()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_descriptions.clear();
    }

    std::size_t Size()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_descriptions.size();
    }

private:
    std::mutex m_mutex; // guards the map; nothing is called with it held
    std::unordered_map<std::string, std::shared_ptr<const Internal::SDescription>> m_descriptions;
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
