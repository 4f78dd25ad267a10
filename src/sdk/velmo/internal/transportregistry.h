// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/transport.h"
#include "velmo/velmo_testexport.h"

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace Velmo::Internal
{

/**
 * The transports of the process, in order. Filled by registration.cpp when the SDK starts; tests put their own in.
 *
 * A transport registered by hand stays until it is unregistered, also across the end of the SDK; the built-in ones are
 * made anew by each start and dropped by each end.
 * Threads: any.
 */
class VELMO_TEST_EXPORT CTransportRegistry
{
public:
    using Factory = std::function<std::shared_ptr<Transport::ITransport>()>;
    static CTransportRegistry& GetInstance();

    /** Appends a transport; a class registered before is refused with LogicalErrorException, a null one with
     *  InvalidArgumentException. */
    void Register(std::shared_ptr<Transport::ITransport> transport);
    /** Nothing when there is no such class. */
    void Unregister(const GenICam::gcstring& deviceClass);
    /** Tests: whether VelmoInitialize registers the built-in transports (default true). Set before initialising. */
    void SetBuiltInTransportsEnabled(bool enabled);

    /** Makes and appends a built-in transport unless those are disabled. One that cannot be made is logged and left
     *  out. */
    void RegisterBuiltIn(const char* name, const Factory& factory);
    void DropBuiltIns();

    std::vector<std::shared_ptr<Transport::ITransport>> GetAll() const;
    /** Null when there is none of that class. */
    std::shared_ptr<Transport::ITransport> Find(const GenICam::gcstring& deviceClass) const;

private:
    struct SEntry
    {
        GenICam::gcstring deviceClass;
        std::shared_ptr<Transport::ITransport> transport;
        bool builtIn = false;
    };
    void Append(std::shared_ptr<Transport::ITransport> transport, bool builtIn);

    mutable std::mutex m_mutex; // guards the members below; never held while a transport is called
    std::vector<SEntry> m_entries;
    bool m_builtInEnabled = true;
};

} // namespace Velmo::Internal
