// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/nodemap.h"

namespace GenApi
{
namespace Internal
{

/** A read through a public interface: the lock, the access mode, the error node when verified. */
template <class Access> auto ReadAccess(CNode& node, bool verify, Access access)
{
    return node.Map().Run(
        [&]
        {
            node.RequireReadable();
            auto value = access();
            if (verify)
            {
                node.CheckError();
            }
            return value;
        });
}

/** A write through a public interface. */
template <class Access> void WriteAccess(CNode& node, bool verify, Access access)
{
    node.Map().Run(
        [&]
        {
            node.RequireWritable();
            access();
            if (verify)
            {
                node.CheckError();
            }
        });
}

} // namespace Internal
} // namespace GenApi
