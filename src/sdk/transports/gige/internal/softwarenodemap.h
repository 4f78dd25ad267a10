// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"
#include "genapi/memoryport.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Velmo::GigE::Internal
{

/**
 * Parameters that live in this process: a small description over memory with hooks.
 *
 * Add all parameters, then Build(). Hooks run on the thread that reads or writes and may throw GenICam exceptions.
 * Threads: Add and Build on one; the node map as any node map.
 */
class CSoftwareNodeMap
{
public:
    using Getter = std::function<std::int64_t()>;
    using Setter = std::function<void(std::int64_t)>;

    explicit CSoftwareNodeMap(std::string modelName);

    struct SInteger
    {
        std::string name;
        std::string toolTip;
        std::string unit;           // "" for none
        std::string representation; // of the standard's; "" for the default
        std::int64_t min = 0;
        std::int64_t max = INT64_MAX;
        std::int64_t value = 0;
        Getter getter; // null: the value as it was set
        Setter setter; // null: read only
    };
    void Add(SInteger parameter);
    void AddBoolean(const std::string& name, const std::string& toolTip, bool value, Setter setter);
    /** Read only. */
    void AddText(const std::string& name, const std::string& toolTip, const std::string& value);
    void Build();
    GenApi::INodeMap* Get() const { return m_pNodeMap.get(); }

private:
    std::int64_t Reserve(std::int64_t bytes);
    void Hook(std::int64_t address, Getter getter, Setter setter);
    std::string Register(const std::string& name, std::int64_t address, const char* accessMode) const;

    std::string m_modelName;
    std::string m_features;
    std::string m_nodes;
    GenApi::CMemoryPort m_port;
    std::int64_t m_used = 0;
    std::unique_ptr<GenApi::INodeMap> m_pNodeMap;
};

} // namespace Velmo::GigE::Internal
