// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_export.h"
#include "camerapool/itransportlayerinfo.h"

#include <QSharedPointer>
#include <QVector>

namespace Velmo
{
class ITransportLayer;
}

namespace Plugin::CameraPool
{

namespace Internal
{
class CTransportLayerInfo;
}

/** The transport layers of one enumeration, in the order of the SDK. */
class CAMERAPOOL_EXPORT CTransportLayerList : public QVector<TransportLayerInfoPtr>
{
public:
    using QVector<TransportLayerInfoPtr>::QVector;

    /**
     * Asks every transport layer of the SDK for its interfaces and cameras and replaces the list by the result.
     *
     * gigEOnly leaves out what is not GigE Vision; transportLayersOnly asks for no interfaces and cameras;
     * logResults writes what was found. Never throws; a transport layer that fails keeps what it had. Takes as long
     * as the discovery of all transport layers. Threads: one at a time, together with releaseTeskProducer().
     */
    static void refreshTransportLayerList(CTransportLayerList& list, bool gigEOnly, bool transportLayersOnly,
                                          bool logResults);

    /** Releases the CoaXPress producer that is kept open between enumerations, if there is one. */
    static void releaseTeskProducer();

private:
    struct SSettings;

    /** Asks one transport layer; its record stays as it was when there is no asking it. */
    static void refreshContents(const Velmo::CTlInfo& velmoInfo, const SSettings& settings, bool logResults,
                                Internal::CTransportLayerInfo& record);
    /** The one that is kept open; null when it cannot be created. */
    static Velmo::ITransportLayer* cxpTransportLayer(const Velmo::CTlInfo& velmoInfo);
    static QVector<QSharedPointer<Internal::CTransportLayerInfo>>& knownTransportLayers();

    /** Every record ever made, in the order of the first sighting; grows only. */
    static QVector<QSharedPointer<Internal::CTransportLayerInfo>>* m_pKnownTransportLayers;
    /** Kept open between enumerations; null when there is none. */
    static Velmo::ITransportLayer* m_pCxpTransportLayer;
};

} // namespace Plugin::CameraPool
