// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"
#include "genapi/memoryport.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace Velmo::Emulation::Internal
{

/** Where the values of a stream's node map come from. Called on any thread. */
struct SStreamValues
{
    std::function<std::uint64_t()> payloadBytes;
    std::function<std::uint64_t()> totalBuffers;
    std::function<std::uint64_t()> failedBuffers;
    std::function<std::uint64_t()> underruns;
};

/** A node map over memory of its own. Threads: as any node map. */
class CSoftwareNodeMap
{
public:
    /** The parameters of a stream; isMonitor decides the first TransmissionType. */
    static std::unique_ptr<CSoftwareNodeMap> MakeStream(SStreamValues values, bool isMonitor);
    /** The parameters of an interface. */
    static std::unique_ptr<CSoftwareNodeMap> MakeInterface(const std::string& id, const std::string& name,
                                                           std::function<std::uint64_t()> deviceCount);
    ~CSoftwareNodeMap();
    GenApi::INodeMap* Get() const { return m_nodeMap.get(); }

private:
    explicit CSoftwareNodeMap(const std::string& description);
    void Provide(int index, std::function<std::uint64_t()> value);

    GenApi::CMemoryPort m_port;
    std::unique_ptr<GenApi::INodeMap> m_nodeMap; // after the port that it reads
};

} // namespace Velmo::Emulation::Internal
