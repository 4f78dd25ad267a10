// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/enumerationnode.h"

#include "genapi/internal/nodeaccess.h"

#include <algorithm>

namespace GenApi
{
namespace Internal
{

CEnumEntryNode* CEnumerationNode::FindEntry(std::int64_t value)
{
    const auto found = Part().byValue.find(value);
    if (found == Part().byValue.end())
    {
        return nullptr;
    }
    // Descriptions for several models give one value several names, of which the model at hand has one.
    const NodeIndices& entries = found->second;
    const auto isAvailable = [this](NodeIndex entry)
    {
        return IsAvailable(Map().Node(entry).AvailableMode());
    };
    const auto chosen = entries.size() == 1 ? entries.end() : std::find_if(entries.begin(), entries.end(), isAvailable);
    return static_cast<CEnumEntryNode*>(&Map().Node(chosen == entries.end() ? entries.front() : *chosen));
}

EAccessMode CEnumerationNode::SourceMode()
{
    const NodeIndices& entries = Part().entries;
    const auto isAvailable = [this](NodeIndex entry)
    {
        return IsAvailable(Map().Node(entry).AvailableMode());
    };
    if (!entries.empty() && std::none_of(entries.begin(), entries.end(), isAvailable))
    {
        return EAccessMode::NA;
    }
    return CNumberNode::SourceMode();
}

void CEnumerationNode::RequireAvailable(CNode& entry) const
{
    if (!IsAvailable(entry.AvailableMode()))
    {
        GENICAM_THROW(AccessException, "Node '" + Description().name + "': the entry '" +
                                           entry.Description().entry->symbolic + "' is not available");
    }
}

void CEnumerationNode::WriteNumber(const SFormulaValue& value, bool verify)
{
    const std::int64_t number = ToInteger(value, *this);
    CEnumEntryNode* const entry = FindEntry(number);
    if (verify && entry == nullptr)
    {
        GENICAM_THROW(InvalidArgumentException,
                      "Node '" + Description().name + "' has no entry of value " + std::to_string(number));
    }
    if (verify)
    {
        RequireAvailable(*entry);
    }
    CNumberNode::WriteNumber(value, verify);
    if (entry != nullptr && entry->Description().entry->isSelfClearing)
    {
        // The device takes the value back by itself.
        Map().Invalidate(Index());
    }
}

void CEnumerationNode::GetEntries(EnumEntryList& entries)
{
    entries.clear();
    Map().Run(
        [&]
        {
            for (const NodeIndex entry : Part().entries)
            {
                entries.push_back(static_cast<CEnumEntryNode*>(&Map().Node(entry)));
            }
        });
}

void CEnumerationNode::GetSymbolics(GenICam::gcstring_vector& symbolics)
{
    symbolics.clear();
    for (const NodeIndex entry : Part().entries)
    {
        symbolics.emplace_back(Map().Description().nodes[static_cast<std::size_t>(entry)].entry->symbolic);
    }
}

void CEnumerationNode::SetIntValue(std::int64_t value, bool verify)
{
    WriteAccess(*this, verify, [&] { WriteNumber(SFormulaValue::FromInteger(value), verify); });
}

std::int64_t CEnumerationNode::GetIntValue(bool verify, bool ignoreCache)
{
    return ReadAccess(*this, verify, [&] { return ReadInteger(ignoreCache); });
}

IEnumEntry* CEnumerationNode::GetEntryByName(const GenICam::gcstring& symbolic)
{
    const auto found = Part().bySymbolic.find(symbolic.str());
    if (found == Part().bySymbolic.end())
    {
        return nullptr;
    }
    return Map().Run([&] { return static_cast<CEnumEntryNode*>(&Map().Node(found->second)); });
}

IEnumEntry* CEnumerationNode::GetEntry(std::int64_t value)
{
    return Map().Run([&] { return FindEntry(value); });
}

IEnumEntry* CEnumerationNode::GetCurrentEntry(bool verify, bool ignoreCache)
{
    return ReadAccess(*this, verify, [&] { return FindEntry(ReadInteger(ignoreCache)); });
}

GenICam::gcstring CEnumerationNode::ToString(bool verify, bool ignoreCache)
{
    return ReadAccess(*this, verify,
                      [&]
                      {
                          const std::int64_t value = ReadInteger(ignoreCache);
                          const CEnumEntryNode* const entry = FindEntry(value);
                          if (entry == nullptr)
                          {
                              GENICAM_THROW(RuntimeException, "Node '" + Description().name + "': the device's value " +
                                                                  std::to_string(value) + " belongs to no entry");
                          }
                          return entry->Description().entry->symbolic;
                      });
}

void CEnumerationNode::FromString(const GenICam::gcstring& text, bool verify)
{
    const auto found = Part().bySymbolic.find(text.str());
    if (found == Part().bySymbolic.end())
    {
        GENICAM_THROW(InvalidArgumentException, "Node '" + Description().name + "' has no entry '" + text.str() + "'");
    }
    WriteAccess(*this, verify,
                [&]
                {
                    CNode& entry = Map().Node(found->second);
                    if (verify)
                    {
                        RequireAvailable(entry);
                    }
                    WriteNumber(SFormulaValue::FromInteger(entry.Description().entry->value), verify);
                });
}

} // namespace Internal
} // namespace GenApi
