// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/enumentrynode.h"

namespace GenApi
{
namespace Internal
{

double CEnumEntryNode::GetNumericValue() const
{
    const SEntryPart& part = *Description().entry;
    return part.hasNumericValue ? part.numericValue : static_cast<double>(part.value);
}

GenICam::gcstring CEnumEntryNode::ToString(bool, bool)
{
    return Description().entry->symbolic;
}

void CEnumEntryNode::FromString(const GenICam::gcstring&, bool)
{
    ThrowAccess("writable", EAccessMode::RO);
}

} // namespace Internal
} // namespace GenApi
