// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"
#include "genapi/inodes.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace Test
{

/** A camera's files through its node map: SFNC's file access. Operations return FileOperationStatus. */
class CFileNodes
{
public:
    explicit CFileNodes(GenApi::INodeMap& nodeMap) : m_nodeMap(nodeMap) {}

    std::string Get(const char* name) { return Node<GenApi::IValue>(name).ToString(false, false).str(); }
    void Set(const char* name, const std::string& value) { Node<GenApi::IValue>(name).FromString(value, true); }
    void Execute(const char* name) { Node<GenApi::ICommand>(name).Execute(); }

    std::string Do(const char* operation)
    {
        Set("FileOperationSelector", operation);
        Execute("FileOperationExecute");
        return Get("FileOperationStatus");
    }
    std::string Open(const std::string& file, const char* mode)
    {
        Set("FileSelector", file);
        Set("FileOpenMode", mode);
        return Do("Open");
    }
    /** Up to and with Close; ends with the first operation that is no Success. */
    std::string Upload(const std::string& file, const std::vector<std::uint8_t>& bytes)
    {
        std::string status = Open(file, "Write");
        auto& buffer = Node<GenApi::IRegister>("FileAccessBuffer");
        std::vector<std::uint8_t> block(static_cast<std::size_t>(buffer.GetLength()));
        for (std::size_t at = 0; at < bytes.size() && status == "Success";)
        {
            const std::size_t part = std::min(bytes.size() - at, block.size());
            std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), part, block.begin());
            buffer.Set(block.data(), static_cast<std::int64_t>(block.size()));
            Set("FileAccessOffset", std::to_string(at));
            Set("FileAccessLength", std::to_string(part));
            status = Do("Write");
            at += std::stoul(Get("FileOperationResult"));
        }
        return status == "Success" ? Do("Close") : status;
    }
    std::vector<std::uint8_t> Download(const std::string& file)
    {
        std::vector<std::uint8_t> bytes;
        std::string status = Open(file, "Read");
        auto& buffer = Node<GenApi::IRegister>("FileAccessBuffer");
        std::vector<std::uint8_t> block(static_cast<std::size_t>(buffer.GetLength()));
        std::size_t part = block.size();
        while (status == "Success" && part == block.size())
        {
            Set("FileAccessOffset", std::to_string(bytes.size()));
            Set("FileAccessLength", std::to_string(block.size()));
            status = Do("Read");
            part = std::stoul(Get("FileOperationResult"));
            buffer.Get(block.data(), static_cast<std::int64_t>(block.size()));
            bytes.insert(bytes.end(), block.begin(), block.begin() + static_cast<std::ptrdiff_t>(part));
        }
        Do("Close");
        return bytes;
    }

private:
    /** Throws std::bad_cast when there is no such node. */
    template <class T> T& Node(const char* name) { return dynamic_cast<T&>(*m_nodeMap.GetNode(name)); }

    GenApi::INodeMap& m_nodeMap;
};

} // namespace Test
