// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/registernode.h"

#include "genapi/internal/nodeaccess.h"
#include "genapi/internal/textparse.h"

#include <charconv>
#include <cstring>

namespace GenApi
{
namespace Internal
{
namespace
{

void CheckLength(const CNode& node, std::int64_t length, std::int64_t available)
{
    if (length < 0 || length > available)
    {
        GENICAM_THROW(OutOfRangeException, "Node '" + node.Description().name + "': " + std::to_string(length) +
                                               " bytes asked for, the register has " + std::to_string(available));
    }
}

} // namespace

void SetRegister(CNode& node, const std::uint8_t* data, std::int64_t length, bool verify)
{
    WriteAccess(node, verify,
                [&]
                {
                    CheckLength(node, length, node.Register()->Length());
                    node.Register()->Write(std::vector<std::uint8_t>(data, data + length));
                });
}

void GetRegister(CNode& node, std::uint8_t* data, std::int64_t length, bool verify, bool ignoreCache)
{
    ReadAccess(node, verify,
               [&]
               {
                   const std::vector<std::uint8_t>& bytes = node.Register()->Read(ignoreCache);
                   CheckLength(node, length, static_cast<std::int64_t>(bytes.size()));
                   if (length > 0)
                   {
                       std::memcpy(data, bytes.data(), static_cast<std::size_t>(length));
                   }
                   return length;
               });
}

std::int64_t RegisterLength(CNode& node)
{
    return node.Map().Run([&] { return node.Register()->Length(); });
}

std::int64_t RegisterAddress(CNode& node)
{
    return node.Map().Run([&] { return node.Register()->Address(); });
}

CRegisterNode::CRegisterNode(CNodeMap& map, NodeIndex index) : CNode(map, index), m_access(*this) {}

void CRegisterNode::Set(const std::uint8_t* data, std::int64_t length, bool verify)
{
    SetRegister(*this, data, length, verify);
}

void CRegisterNode::Get(std::uint8_t* data, std::int64_t length, bool verify, bool ignoreCache)
{
    GetRegister(*this, data, length, verify, ignoreCache);
}

GenICam::gcstring CRegisterNode::ToString(bool verify, bool ignoreCache)
{
    static constexpr char Digits[] = "0123456789ABCDEF";
    return ReadAccess(*this, verify,
                      [&]
                      {
                          std::string text = "0x";
                          for (const std::uint8_t byte : m_access.Read(ignoreCache))
                          {
                              text += Digits[byte >> 4];
                              text += Digits[byte & 0xF];
                          }
                          return text;
                      });
}

void CRegisterNode::FromString(const GenICam::gcstring& text, bool verify)
{
    std::string_view digits = Trim(text.str());
    if (digits.substr(0, 2) == "0x" || digits.substr(0, 2) == "0X")
    {
        digits.remove_prefix(2);
    }
    std::vector<std::uint8_t> bytes(digits.size() / 2);
    bool isGood = digits.size() % 2 == 0;
    for (std::size_t i = 0; isGood && i < bytes.size(); ++i)
    {
        const char* const first = digits.data() + 2 * i;
        const auto [stop, error] = std::from_chars(first, first + 2, bytes[i], 16);
        isGood = error == std::errc() && stop == first + 2;
    }
    if (!isGood)
    {
        GENICAM_THROW(InvalidArgumentException,
                      "Node '" + Description().name + "': the text is no sequence of hexadecimal bytes");
    }
    Set(bytes.data(), static_cast<std::int64_t>(bytes.size()), verify);
}

bool CRegisterNode::IsValueCacheValid() const
{
    return Map().Run([this] { return m_access.IsCacheValid(); });
}

void CRegisterNode::Drop()
{
    CNode::Drop();
    m_access.Drop();
}

} // namespace Internal
} // namespace GenApi
