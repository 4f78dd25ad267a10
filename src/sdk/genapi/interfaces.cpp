// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/inodemap.h"
#include "genapi/inodes.h"

namespace GenApi
{

// Destructors are defined here so that each interface's run-time information exists once in the process.
IBase::~IBase() = default;
INode::~INode() = default;
IValue::~IValue() = default;
IInteger::~IInteger() = default;
IFloat::~IFloat() = default;
IBoolean::~IBoolean() = default;
ICommand::~ICommand() = default;
IString::~IString() = default;
IRegister::~IRegister() = default;
IEnumEntry::~IEnumEntry() = default;
IEnumeration::~IEnumeration() = default;
ICategory::~ICategory() = default;
ISelector::~ISelector() = default;
IPort::~IPort() = default;
INodeMap::~INodeMap() = default;

GenICam::gcstring IPort::GetWriteRefusal() const
{
    return {};
}

} // namespace GenApi
