// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/exceptions.h"
#include "genapi/inodemap.h"
#include "genapi/memoryport.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace
{

/** A description may make any access fail, but only with a GenICam exception. */
template <class Access> void Try(Access access)
{
    try
    {
        access();
    }
    catch (const GenICam::GenericException&)
    {
    }
}

void Walk(GenApi::INodeMap& map)
{
    GenApi::NodeList nodes;
    map.GetNodes(nodes);
    for (GenApi::INode* const node : nodes)
    {
        Try([&] { node->GetAccessMode(); });
        Try([&] { node->GetDisplayName(); });
        if (const GenApi::CValuePtr value = node)
        {
            Try([&] { value->FromString(value->ToString()); });
            Try([&] { value->FromString("1"); });
        }
        if (const GenApi::CIntegerPtr integer = node)
        {
            Try([&] { integer->SetValue(integer->GetMax()); });
            Try([&] { integer->SetValue(integer->GetMin() + integer->GetInc(), false); });
        }
        if (const GenApi::CFloatPtr real = node)
        {
            Try([&] { real->SetValue(real->GetMax() / 2 + real->GetMin() / 2); });
        }
        Try([&] { node->InvalidateNode(); });
    }
    Try([&] { map.Poll(1000); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Try(
        [&]
        {
            const auto map = GenApi::CNodeMapFactory::FromData(data, size).CreateNodeMap();
            GenApi::CMemoryPort port(1024);
            map->Connect(&port);
            map->AttachChunk("1", data, size, GenApi::EEndianness::Big);
            Walk(*map);
            map->Disconnect(&port);
        });
    GenApi::CNodeMapFactory::ClearCache();
    return 0;
}
