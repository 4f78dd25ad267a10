// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/transport.h"
#include "transports/gige/internal/softwarenodemap.h"

namespace Velmo::GigE::Internal
{

/** A network adapter with its addresses as parameters. Threads: one at a time. */
class CAdapterInterface : public Transport::IInterface
{
public:
    explicit CAdapterInterface(CInterfaceInfo info);
    ~CAdapterInterface() override;
    const CInterfaceInfo& GetInterfaceInfo() const override { return m_info; }
    void Open() override;
    void Close() override;
    bool IsOpen() const override { return m_pParameters != nullptr; }
    GenApi::INodeMap* GetNodeMap() override;

private:
    CInterfaceInfo m_info;
    std::unique_ptr<CSoftwareNodeMap> m_pParameters;
};

} // namespace Velmo::GigE::Internal
