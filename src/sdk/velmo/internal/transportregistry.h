// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/transport.h"
#include "velmo/velmo_testexport.h"

#include <functional>
#include <memory>
#include <vector>

namespace Velmo::Internal
{

/**
 * The transports of the process, in order. Filled by registration.cpp when the SDK starts; tests put their own in.
 * Threads: any.
 */
class VELMO_TEST_EXPORT CTransportRegistry
{
public:
    using Factory = std::function<std::shared_ptr<Transport::ITransport>()>;
    static CTransportRegistry& GetInstance();

    /** Appends a transport; a class registered before is refused with LogicalErrorException. */
    void Register(std::shared_ptr<Transport::ITransport> transport);
    void Unregister(const GenICam::gcstring& deviceClass);
    /** Tests: whether VelmoInitialize registers the built-in transports (default true). Set before initialising. */
    void SetBuiltInTransportsEnabled(bool enabled);

    std::vector<std::shared_ptr<Transport::ITransport>> GetAll() const;
    std::shared_ptr<Transport::ITransport> Find(const GenICam::gcstring& deviceClass) const;
};

} // namespace Velmo::Internal
