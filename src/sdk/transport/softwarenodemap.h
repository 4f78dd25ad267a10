// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"
#include "genapi/memoryport.h"
#include "transport/transport_export.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Velmo::Transport
{

/** One parameter of a software node map. Names and texts go into a description: they must not need escaping. */
struct SSoftwareParameter
{
    std::string name;
    std::string toolTip;
    std::int64_t value = 0; // the first one; when there is no getter, kept in the node map
    std::function<std::int64_t()> getter;
    std::function<void(std::int64_t)> setter; // for commands: what is executed
    bool isWritable = false;                  // also when there is a setter

    // Integers
    std::int64_t min = 0;
    std::int64_t max = INT64_MAX;
    std::string maxFrom;        // the parameter that holds the maximum; "" for max
    std::string unit;           // "" for none
    std::string representation; // of the standard's; "" for the default

    // Enumerations: name and value of each entry
    std::vector<std::pair<std::string, std::int64_t>> entries;

    // Texts
    std::string text;
    std::function<std::string()> textGetter;

    // All
    bool isCustom = false;               // not a name of the GenICam naming conventions
    std::string visibility;              // "" for Beginner
    std::string lockedBy;                // the parameter that, when it is not 0, locks this one
    std::string availableBy;             // the parameter that, when it is 0, makes this one not available
    std::vector<std::string> selects;    // the parameters that this one selects
    std::vector<std::string> changeWith; // the parameters whose change changes this one
    int pollingMs = 0;                   // how often a viewer should read again; 0: need not
};

/**
 * Parameters that live in this process: a small description over memory with hooks.
 *
 * Add all parameters, in the order in which they shall be shown, then Build(). Getters and setters run on the thread
 * that reads or writes, with the node map's lock held, and may throw GenICam exceptions: a write whose setter throws
 * leaves the old value. What they use must live as long as the node map.
 * Threads: adding and Build on one; the node map and Set as any node map.
 */
class TRANSPORT_EXPORT CSoftwareNodeMap
{
public:
    explicit CSoftwareNodeMap(std::string modelName);
    ~CSoftwareNodeMap();
    CSoftwareNodeMap(const CSoftwareNodeMap&) = delete;
    CSoftwareNodeMap& operator=(const CSoftwareNodeMap&) = delete;

    /** What is added afterwards belongs to that category of the root. Until the first call it is in the root. */
    void BeginCategory(const std::string& name, const std::string& toolTip);
    void AddInteger(SSoftwareParameter parameter);
    void AddBoolean(SSoftwareParameter parameter);
    void AddEnumeration(SSoftwareParameter parameter);
    /** Read only; at most TextBytes are shown. */
    void AddText(SSoftwareParameter parameter);
    void AddCommand(SSoftwareParameter parameter);
    /** An integer that no viewer shows, for availableBy, lockedBy and maxFrom. */
    void AddHidden(SSoftwareParameter parameter);
    /** Throws LogicalErrorException when parameters name others that do not exist. */
    void Build();

    /** Null before Build. */
    GenApi::INodeMap* Get() const { return m_nodeMap.get(); }
    /** Changes a value from inside, also of what is read only to others; fires callbacks. After Build. */
    void Set(const std::string& name, std::int64_t value);

    static constexpr std::int64_t TextBytes = 512;

private:
    void Add(const char* element, SSoftwareParameter& parameter, const std::string& own);
    void AddNumber(const char* element, SSoftwareParameter& parameter, const std::string& own);
    void Hook(std::int64_t address, const SSoftwareParameter& parameter);

    const std::string m_modelName;
    std::string m_rootFeatures;
    std::string m_features; // of the category that is being filled
    std::string m_nodes;
    bool m_isInCategory = false;
    std::int64_t m_used = 0;
    std::map<std::string, std::int64_t> m_addresses;                  // of the numbers
    std::vector<std::function<void(GenApi::CMemoryPort&)>> m_prepare; // first values and hooks, until Build
    std::unique_ptr<GenApi::CMemoryPort> m_port;
    std::unique_ptr<GenApi::INodeMap> m_nodeMap; // after the port that it reads
};

} // namespace Velmo::Transport
