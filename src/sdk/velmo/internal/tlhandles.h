// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/transport.h"
#include "velmo/transportlayer.h"
#include "velmo/velmo_testexport.h"

#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace Velmo::Internal
{

class ITransportLayerHandle;

/**
 * The handles that CTlFactory gave out, and which transport each living device belongs to.
 *
 * There is one handle object per transport, counted. Handles that are still held when the SDK ends stay valid objects
 * whose functions throw RuntimeException; they may be released later. A transport lives as long as any device made by
 * it.
 * Threads: any.
 */
class VELMO_TEST_EXPORT CTlHandles
{
public:
    static CTlHandles& GetInstance();
    CTlHandles();
    ~CTlHandles();

    /** Null when there is no such class or its transport fails; the failure is logged. */
    ITransportLayer* Acquire(const GenICam::gcstring& deviceClass);
    /** Nothing for null; throws InvalidArgumentException for a handle that is not held. */
    void Release(const ITransportLayer* pTl);
    /** How often handles of that class are held now. */
    unsigned int HeldCount(const GenICam::gcstring& deviceClass) const;
    /** The SDK ends: the handles still held let go of their transports. */
    void DetachAll();

    IVelmoDevice* CreateDevice(const std::shared_ptr<Transport::ITransport>& transport, const CDeviceInfo& info);
    /** Nothing for null. Also destroys a device that was made elsewhere. */
    void DestroyDevice(IVelmoDevice* pDevice);

private:
    struct SHandle
    {
        std::shared_ptr<Transport::ITransport> transport;
        std::unique_ptr<ITransportLayer> handle;
        ITransportLayerHandle* pDetachable = nullptr;
        GenICam::gcstring deviceClass;
        unsigned int held = 0;
    };

    mutable std::mutex m_mutex; // guards the members below; never held while a transport is called
    std::vector<SHandle> m_handles;
    std::map<IVelmoDevice*, std::shared_ptr<Transport::ITransport>> m_devices;
};

} // namespace Velmo::Internal
