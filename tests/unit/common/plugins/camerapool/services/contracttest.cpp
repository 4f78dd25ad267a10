// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/camerapoolplugin.h"
#include "camerapool/icameraactioncommandsservice.h"
#include "camerapool/icameracontrolservice.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/idevicefirmwareupdateservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "camerapool/iinterfaceinfo.h"
#include "camerapool/internal/cameraenumerationservice.h"
#include "camerapool/internal/cameranodedatamodel.h"
#include "camerapool/internal/camerastreamcontrolservice.h"
#include "camerapool/internal/ifirmwareupdatable.h"
#include "camerapool/internal/imagedecompressorservice.h"

#include <gtest/gtest.h>

#include <QMetaMethod>

#include <cstddef>
#include <cstring>
#include <vector>

/** What other plugins were compiled against: places in virtual tables, and signals and slots in their order. */
namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;

/** The place of a virtual function in its table. Itanium C++ ABI, 2.3: one plus the offset in bytes. */
template <class Function> std::ptrdiff_t slotOf(Function function)
{
    static_assert(sizeof(function) == 2 * sizeof(std::ptrdiff_t));
    std::ptrdiff_t words[2];
    std::memcpy(words, &function, sizeof(words));
    return (words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

void expectConsecutive(const std::vector<std::ptrdiff_t>& slotNumbers)
{
    for (std::size_t i = 1; i < slotNumbers.size(); ++i)
    {
        EXPECT_EQ(slotNumbers[i], slotNumbers[0] + static_cast<std::ptrdiff_t>(i)) << "function " << i;
    }
}

TEST(VirtualOrder, ofRecords)
{
    using Info = Plugin::AppCore::IInfo;
    const std::vector<std::ptrdiff_t> base = {slotOf(&Info::isValid),          slotOf(&IBaseInfo::getFriendlyName),
                                              slotOf(&IBaseInfo::getFullName), slotOf(&IBaseInfo::getVendorName),
                                              slotOf(&IBaseInfo::getTLType),   slotOf(&IBaseInfo::getType),
                                              slotOf(&IBaseInfo::errorString), slotOf(&IBaseInfo::clearError)};
    expectConsecutive(base);
    expectConsecutive({base.back(), slotOf(&ICameraInfo::getTransportLayerName), slotOf(&ICameraInfo::getCameraVersion),
                       slotOf(&ICameraInfo::getModelName), slotOf(&ICameraInfo::getSerialNumber),
                       slotOf(&ICameraInfo::getUserDefinedName), slotOf(&ICameraInfo::getVelmoDeviceInfo)});
    expectConsecutive(
        {base.back(), slotOf(&IInterfaceInfo::getInterfaceId), slotOf(&IInterfaceInfo::getVelmoInterfaceInfo)});
    using Layer = ITransportLayerInfo;
    expectConsecutive({slotOf(&Layer::getCameraInfoList), slotOf(&Layer::getInterfaceInfoList),
                       slotOf(&Layer::getClass), slotOf(&Layer::getTlType), slotOf(&Layer::getFriendlyName),
                       slotOf(&Layer::getFullName), slotOf(&Layer::haveContainedCamerasChanged)});
}

TEST(VirtualOrder, ofDevicesAndPools)
{
    expectConsecutive({slotOf(&IDevice::getInfo), slotOf(&IDevice::isConnected), slotOf(&IDevice::isOpen),
                       slotOf(&IDevice::getParameterCollection), slotOf(&IDevice::open), slotOf(&IDevice::close)});
    using Info = QSharedPointer<IBaseInfo>;
    using Device = QSharedPointer<IDevice>;
    using Pool = ADevicePool;
    expectConsecutive({slotOf(&Pool::findDevice), slotOf<bool (Pool::*)(Info, bool)>(&Pool::openDevice),
                       slotOf<bool (Pool::*)(bool)>(&Pool::openDevice), slotOf(&Pool::isDeviceOpen),
                       slotOf<void (Pool::*)(Device)>(&Pool::closeDevice),
                       slotOf<void (Pool::*)(Info)>(&Pool::closeDevice), slotOf<void (Pool::*)()>(&Pool::closeDevice),
                       slotOf(&Pool::announceDevice), slotOf(&Pool::announceDevices), slotOf(&Pool::beginAnnounce),
                       slotOf(&Pool::endAnnounce), slotOf(&Pool::createDevice), slotOf(&Pool::isDeviceOpenExclusive)});
}

TEST(VirtualOrder, ofControlAndStatusServices)
{
    using Info = QSharedPointer<IBaseInfo>;
    using Control = ICameraControlService;
    expectConsecutive({slotOf<bool (IDeviceControlService::*)(Info, bool)>(&Control::open),
                       slotOf<void (IDeviceControlService::*)(QSharedPointer<IDevice>)>(&Control::close),
                       slotOf<void (IDeviceControlService::*)(Info)>(&Control::close),
                       slotOf<bool (IDeviceControlService::*)(bool)>(&Control::open),
                       slotOf<void (IDeviceControlService::*)()>(&Control::close),
                       slotOf(&Control::openCameraExclusive), slotOf(&Control::tryLock), slotOf(&Control::unlock),
                       slotOf(&Control::addRemoteGigECamera)});
    using Status = ICameraStatusService;
    expectConsecutive({slotOf(&Status::isDeviceOpen), slotOf(&Status::setActiveDevice),
                       slotOf(&Status::getActiveDevice), slotOf(&Status::isCameraOpenExclusive),
                       slotOf(&Status::isCameraGrabbing), slotOf(&Status::getCountGrabbing)});
}

TEST(VirtualOrder, ofStreamAndEnumerationServices)
{
    using Info = QSharedPointer<ICameraInfo>;
    using Stream = ICameraStreamControlService;
    expectConsecutive({slotOf<void (Stream::*)(Info)>(&Stream::startGrabbing),
                       slotOf<void (Stream::*)(Info)>(&Stream::stopGrabbing),
                       slotOf<void (Stream::*)(Info, unsigned int)>(&Stream::singleShot),
                       slotOf<void (Stream::*)()>(&Stream::stopGrabbing), slotOf(&Stream::stopGrabbingAll),
                       slotOf<void (Stream::*)()>(&Stream::startGrabbing),
                       slotOf<void (Stream::*)(unsigned int)>(&Stream::singleShot)});
    using Result = QVector<TransportLayerInfoPtr>;
    using Enumeration = ICameraEnumerationService;
    expectConsecutive({slotOf<Result (Enumeration::*)()>(&Enumeration::enumerate),
                       slotOf<Result (Enumeration::*)(QString)>(&Enumeration::enumerate),
                       slotOf(&Enumeration::getOpenCameras), slotOf(&Enumeration::isEnumerationEnabled),
                       slotOf(&Enumeration::setEnumerationEnabled), slotOf(&Enumeration::triggerEnumeration),
                       slotOf(&Enumeration::forceUpdate), slotOf(&Enumeration::disableOnce),
                       slotOf(&Enumeration::removeDevice)});
}

TEST(VirtualOrder, ofTheActionCommandsService)
{
    using Action = ICameraActionCommandsService;
    expectConsecutive({slotOf(&Action::isSupported), slotOf(&Action::isScheduledSupported), slotOf(&Action::issue),
                       slotOf(&Action::schedule)});
}

TEST(VirtualOrder, ofFirmwareUpdates)
{
    using Info = IFirmwareUpdateInfo;
    expectConsecutive({slotOf(&Info::getVersion), slotOf(&Info::getDescription), slotOf(&Info::getReleaseNotes),
                       slotOf(&Info::getUpdateFilename)});
    using Service = IDeviceFirmwareUpdateService;
    expectConsecutive(
        {slotOf(&Service::update), slotOf(&Service::getUpdatesMatchingTheDevice), slotOf(&Service::getUpdates)});
    expectConsecutive(
        {slotOf(&IFirmwareUpdatable::matchesFirmwareUpdate), slotOf(&IFirmwareUpdatable::applyFirmwareUpdate)});
    using Device = GenApi::IFirmwareUpdatableDevice;
    expectConsecutive({slotOf(&Device::PrepareForFirmwareUpdate), slotOf(&Device::GetNodeMapOfDeviceToUpdate),
                       slotOf(&Device::GetDisplayName), slotOf(&Device::DeviceResetWhileUpdatingFirmware),
                       slotOf(&Device::CleanupAfterFirmwareUpdate)});
}

TEST(VirtualOrder, ofPlugins)
{
    using Core::Plugin::IPlugin;
    expectConsecutive({slotOf(&IPlugin::initialize), slotOf(&IPlugin::postInitialize), slotOf(&IPlugin::unInitialize),
                       slotOf(&IPlugin::aboutToUninitialize), slotOf(&IPlugin::setLanguage)});
    using Initializer = Core::Plugin::IPluginInitializer;
    expectConsecutive({slotOf(&Initializer::registerService), slotOf(&Initializer::unregisterService)});
}

TEST(VirtualOrder, ofNodes)
{
    using Node = Plugin::DataProcessingCore::ANodeDataModel;
    expectConsecutive({slotOf(&Node::caption), slotOf(&Node::setCaption), slotOf(&Node::captionVisible),
                       slotOf(&Node::portCaption), slotOf(&Node::portCaptionVisible), slotOf(&Node::name),
                       slotOf(&Node::save), slotOf(&Node::restore), slotOf(&Node::nPorts), slotOf(&Node::dataType),
                       slotOf(&Node::setInData), slotOf(&Node::outData), slotOf(&Node::isUnique)});
    EXPECT_EQ(slotOf(&CCameraNodeDataModel::save), slotOf(&Node::save));
}

/** The class's own signals, or its own slots, in their order. */
QString own(const QMetaObject& meta, QMetaMethod::MethodType type)
{
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        if (meta.method(i).methodType() == type)
        {
            names.append(QString::fromLatin1(meta.method(i).name()));
        }
    }
    return names.join(QLatin1Char(' '));
}

QString signalsOf(const QMetaObject& meta)
{
    return own(meta, QMetaMethod::Signal);
}

QString slotsOf(const QMetaObject& meta)
{
    return own(meta, QMetaMethod::Slot);
}

TEST(SignalOrder, ofDevicesAndPools)
{
    EXPECT_EQ(signalsOf(IDevice::staticMetaObject), QStringLiteral("deviceOpened deviceClosed"));
    EXPECT_EQ(slotsOf(IDevice::staticMetaObject), QStringLiteral("open close"));
    EXPECT_EQ(signalsOf(ADevicePool::staticMetaObject),
              QStringLiteral("deviceOpening deviceOpened deviceClosing deviceClosed activeDeviceChanged "
                             "deviceDisconnected deviceConnected"));
    EXPECT_EQ(slotsOf(ADevicePool::staticMetaObject), QStringLiteral("onDeviceOpened onDeviceClosed"));
    const auto& pool = ADevicePool::staticMetaObject;
    EXPECT_EQ(pool.method(pool.indexOfSlot("onDeviceOpened()")).access(), QMetaMethod::Private);
    EXPECT_EQ(pool.method(pool.indexOfSlot("onDeviceClosed()")).access(), QMetaMethod::Private);
    EXPECT_EQ(CInterfacePool::staticMetaObject.methodCount(), pool.methodCount());
}

TEST(SignalOrder, ofServices)
{
    EXPECT_EQ(signalsOf(IDeviceStatusService::staticMetaObject),
              QStringLiteral("deviceOpening deviceOpened deviceClosing deviceClosed activeDeviceChanged"));
    EXPECT_EQ(signalsOf(ICameraStatusService::staticMetaObject),
              QStringLiteral("cameraGrabStart cameraGrabStarted cameraGrabStopped cameraImageGrabbed "
                             "cameraImageGrabFailed cameraStatisticUpdated cameraDetached cameraAttached "
                             "cameraConnectionLost deviceConnected deviceDisconnected"));
    EXPECT_EQ(slotsOf(ICameraStreamControlService::staticMetaObject),
              QStringLiteral("stopGrabbing stopGrabbingAll startGrabbing singleShot"));
    EXPECT_EQ(slotsOf(CCameraStreamControlService::staticMetaObject),
              QStringLiteral("startGrabbing stopGrabbing stopGrabbingAll singleShot"));
    EXPECT_EQ(signalsOf(CCameraEnumerationThread::staticMetaObject),
              QStringLiteral("enumerationStarted enumerationFinished"));
    EXPECT_EQ(signalsOf(ICameraEnumerationService::staticMetaObject), QStringLiteral("enumerationChanged"));
    EXPECT_EQ(slotsOf(ICameraEnumerationService::staticMetaObject), QStringLiteral("setEnumerationEnabled"));
    EXPECT_EQ(slotsOf(CImageDecompressorService::staticMetaObject), QStringLiteral("onCameraGrabStart onDeviceClosed"));
    for (const auto* pMeta : {&ICameraControlService::staticMetaObject, &IDeviceParameterService::staticMetaObject,
                              &ICameraActionCommandsService::staticMetaObject})
    {
        EXPECT_EQ(pMeta->methodCount(), QObject::staticMetaObject.methodCount()) << pMeta->className();
    }
}

TEST(SignalOrder, ofFirmwareUpdates)
{
    const auto& job = IDeviceFirmwareUpdate::staticMetaObject;
    EXPECT_EQ(signalsOf(job), QStringLiteral("firmwareUpdateBegin firmwareUpdateProgressStepBegin "
                                             "firmwareUpdateProgressStepProgressChanged firmwareUpdateProgressStepDone "
                                             "firmwareUpdateDone firmwareUpdateError"));
    EXPECT_EQ(slotsOf(job), QStringLiteral("apply"));
    for (const auto* pMeta : {&IFirmwareUpdateInfo::staticMetaObject, &IDeviceFirmwareUpdateService::staticMetaObject})
    {
        EXPECT_EQ(pMeta->methodCount(), QObject::staticMetaObject.methodCount()) << pMeta->className();
    }
}

TEST(SignalOrder, ofTheSourceNode)
{
    const auto& node = CCameraNodeDataModel::staticMetaObject;
    EXPECT_EQ(slotsOf(node), QStringLiteral("onCameraImageGrabbed onCameraStatisticUpdated"));
    EXPECT_EQ(node.method(node.methodOffset()).methodSignature(),
              QByteArray("onCameraImageGrabbed(Plugin::CameraPool::CameraInfoPtr,Velmo::CGrabResultPtr)"));
    EXPECT_EQ(node.method(node.methodOffset() + 1).methodSignature(),
              QByteArray("onCameraStatisticUpdated(Plugin::CameraPool::CameraInfoPtr,int,int,double,uint64_t,"
                         "CCompressionStatistic)"));
}

} // namespace
