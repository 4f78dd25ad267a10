// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "clientplugin.h"

#include "parametercollection/parameters.h"
#include "velmo/imagedecompressor.h"

#include <QLoggingCategory>

using namespace Plugin::CameraPool;

namespace
{
Q_LOGGING_CATEGORY(logClient, "Client Plugin")

/** On the grab thread, once for each image, before the next one's chunks are attached: the values are this image's. */
void tellChunks(const std::string& camera, GenApi::INode* pNode)
{
    const GenApi::CIntegerPtr frameId(pNode);
    try
    {
        if (GenApi::IsReadable(pNode)) // not when the chunks go
        {
            qCDebug(logClient, "%s: chunks of frame %lld", camera.c_str(), static_cast<long long>(frameId->GetValue()));
        }
    }
    catch (const GenICam::GenericException& e)
    {
        qCWarning(logClient, "%s: %s", camera.c_str(), e.GetDescription());
    }
}
} // namespace

bool CClientPlugin::initialize(QPointer<Core::Plugin::IPluginInitializer> initializer)
{
    m_control = initializer->findService<ICameraControlService>();
    m_status = initializer->findService<ICameraStatusService>();
    m_stream = initializer->findService<ICameraStreamControlService>();
    m_parameters = initializer->findService<IDeviceParameterService>();
    m_decompressors = initializer->findService<IImageDecompressorService>();
    if (m_control.isNull() || m_status.isNull() || m_stream.isNull() || m_parameters.isNull() ||
        m_decompressors.isNull())
    {
        qCWarning(logClient, "The services of the plugin CameraPool are missing.");
        return false;
    }
    connect(m_status.data(), &ICameraStatusService::deviceConnected, this, &CClientPlugin::onDeviceConnected);
    // A camera that is gone is told by the first, by both, or, when only a discovery pass has missed it, by the second.
    connect(m_status.data(), &ICameraStatusService::cameraConnectionLost, this, &CClientPlugin::onGone);
    connect(m_status.data(), &ICameraStatusService::deviceDisconnected, this, &CClientPlugin::onGone);
    connect(m_status.data(), &ICameraStatusService::cameraImageGrabbed, this, &CClientPlugin::onImageGrabbed);
    return true;
}

bool CClientPlugin::postInitialize()
{
    return true;
}

void CClientPlugin::onDeviceConnected(const QSharedPointer<IBaseInfo>& info)
{
    const auto camera = info.objectCast<ICameraInfo>(); // null for an interface
    if (camera.isNull() || !m_camera.isNull())
    {
        return;
    }
    constexpr bool monitorMode = false;
    if (!m_control->open(camera, monitorMode))
    {
        qCWarning(logClient, "%s cannot be opened: %s", qUtf8Printable(camera->getFriendlyName()),
                  qUtf8Printable(camera->errorString()));
        return;
    }
    m_camera = camera;
    switchChunksOn();
    watchChunks();
    m_stream->startGrabbing(camera);
}

void CClientPlugin::onGone(const QSharedPointer<IBaseInfo>& info)
{
    if (info == m_camera)
    {
        m_camera.reset(); // the next one that is found takes its place
        m_onChunks = 0;   // its nodes go with it
    }
}

void CClientPlugin::switchChunksOn() const
{
    const auto parameters = m_parameters->getParameterCollection(m_camera);
    using namespace ParameterCollection;
    if (CBooleanParameter(parameters, QStringLiteral("@CameraDevice/ChunkModeActive")).trySetValue(true) &&
        CEnumParameter(parameters, QStringLiteral("@CameraDevice/ChunkSelector"))
            .tryFromString(QStringLiteral("FrameID")))
    {
        CBooleanParameter(parameters, QStringLiteral("@CameraDevice/ChunkEnable")).trySetValue(true);
    }
}

GenApi::INode* CClientPlugin::chunkNode() const
{
    const auto parameters = m_parameters->getParameterCollection(m_camera);
    return parameters.isNull() ? nullptr : parameters->node(QStringLiteral("@CameraDevice/ChunkFrameID"));
}

void CClientPlugin::watchChunks()
{
    if (GenApi::INode* const pNode = chunkNode())
    {
        const std::string name = m_camera->getFriendlyName().toStdString();
        m_onChunks = pNode->RegisterCallback([name](GenApi::INode* pChanged) { tellChunks(name, pChanged); });
    }
}

void CClientPlugin::stopWatchingChunks()
{
    GenApi::INode* const pNode = m_onChunks != 0 ? chunkNode() : nullptr;
    if (pNode != nullptr)
    {
        pNode->DeregisterCallback(m_onChunks);
    }
    m_onChunks = 0;
}

void CClientPlugin::onImageGrabbed(const QSharedPointer<ICameraInfo>& info, const Velmo::CGrabResultPtr& result)
{
    if (info != m_camera || !result.IsValid())
    {
        return;
    }
    qCDebug(logClient, "%s: image %lld, %s", qUtf8Printable(info->getFriendlyName()),
            static_cast<long long>(result->GetImageNumber()), qUtf8Printable(decode(result)));
}

QString CClientPlugin::decode(const Velmo::CGrabResultPtr& result)
{
    Velmo::SCompressionInfo compression;
    if (!Velmo::CImageDecompressor::GetCompressionInfo(compression, result))
    {
        return QStringLiteral("not compressed");
    }
    const auto decompressor = m_decompressors->getImageDecompressor(m_camera);
    if (compression.compressionStatus != Velmo::CompressionStatus_Ok || decompressor.isNull())
    {
        return QStringLiteral("cannot be decoded");
    }
    m_pixels.resize(static_cast<int>(compression.decompressedImageBytes));
    const auto status = decompressor->Decompress(m_pixels.data(), compression.decompressedImageBytes, result);
    return status == Velmo::CompressionStatus_Ok
               ? QStringLiteral("%1 bytes decoded from %2").arg(m_pixels.size()).arg(compression.compressedImageBytes)
               : QStringLiteral("cannot be decoded");
}

void CClientPlugin::aboutToUninitialize()
{
    if (!m_camera.isNull())
    {
        m_stream->stopGrabbing(m_camera);
        stopWatchingChunks();
        const auto camera = m_camera;
        m_camera.reset();
        m_control->close(QSharedPointer<IBaseInfo>(camera));
    }
}

bool CClientPlugin::unInitialize(QPointer<Core::Plugin::IPluginInitializer> /*initializer*/)
{
    if (!m_status.isNull())
    {
        m_status->disconnect(this);
    }
    m_decompressors.reset();
    m_parameters.reset();
    m_stream.reset();
    m_status.reset();
    m_control.reset();
    return true;
}
