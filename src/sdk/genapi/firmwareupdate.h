// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/exceptions.h"
#include "genapi/gcstring.h"
#include "genapi/genapi_export.h"
#include "genapi/inodemap.h"

#include <memory>

/**
 * Firmware updates: update packages are read and checked, matched with a device and applied to it.
 *
 * The format of the files is in docs/protocols/firmwarepackage.md. All of it runs on the caller's thread; nothing is
 * kept between calls but what a CFirmwareUpdateInfo holds, which is no payload: that is read again when it is applied.
 */
namespace GenApi
{

struct SFirmwareUpdate;

/** What an update does at the moment. The numbers are part of the interface. */
enum class EFirmwareUpdateStepType
{
    CheckPreconditions = 0,
    AcquireUpdateData = 1,
    FeatureWrite = 2,
    FeatureExecute = 3,
    FeatureAssert = 4,
    FileUpload = 5,
    DeviceReset = 6,
    Invalid = 7
};

/**
 * One update of a package file. Copies share what was read.
 *
 * Threads: immutable; any thread.
 */
class GENAPI_EXPORT CFirmwareUpdateInfo
{
public:
    /** Invalid: no update. */
    CFirmwareUpdateInfo();
    explicit CFirmwareUpdateInfo(std::shared_ptr<const SFirmwareUpdate> update);

    bool IsValid() const;
    /** The package file as it was named to the reader, UTF-8; empty when invalid. */
    const char* GetUpdateFilename() const;
    /**
     * An information item ("Version", "Description", "ReleaseNotes", or the package's own), UTF-8. The language is an
     * ISO 639-1 code; empty, or one that the item has no text in, gives the item's default text. Null when there is no
     * such item or the info is invalid. Lives as long as any copy of this info.
     */
    const char* GetInfo(const char* key, const char* language) const;
    /** The part of the device's own version text that the package's version pattern captures; the text itself when the
     *  package has no pattern. Throws InvalidArgumentException when the pattern does not fit or the info is invalid. */
    GenICam::gcstring ExtractVersionFromDeviceFirmwareVersion(const GenICam::gcstring& deviceFirmwareVersion) const;

    /** For the module itself. Null when invalid. */
    const std::shared_ptr<const SFirmwareUpdate>& GetUpdate() const { return m_update; }

private:
    std::shared_ptr<const SFirmwareUpdate> m_update;
};

/** Gets the updates of a package while it is read. */
class GENAPI_EXPORT IFirmwareUpdateInfoCollector
{
public:
    virtual ~IFirmwareUpdateInfoCollector();
    /** Called once for each update, in the file's order; false ends the reading. */
    virtual bool OnUpdateRead(const CFirmwareUpdateInfo& updateInfo) = 0;
};

/**
 * Told how an update proceeds, on the thread that applies it. Times are in milliseconds.
 *
 * What a callback throws ends the update where it is: between two steps, or, from the partial progress, inside one; a
 * file that is being uploaded is closed then. The device keeps what it has by that time. OnFirmwareUpdateError is told
 * of it, as of every failure, and must not throw; what OnFirmwareUpdateEnd throws comes too late to end anything.
 */
class GENAPI_EXPORT IFirmwareUpdateProgressObserver
{
public:
    virtual ~IFirmwareUpdateProgressObserver();
    virtual void OnFirmwareUpdateBegin(const CFirmwareUpdateInfo& updateInfo, unsigned int estimatedDuration) = 0;
    /** The description is UTF-8 text for a person, in the package's default language, or null. */
    virtual void OnFirmwareUpdateProgressStepBegin(EFirmwareUpdateStepType step, unsigned int estimatedTime,
                                                   const char* description) = 0;
    /** Per cent of the step, 0 to 100, never falling. Every step ends with 100. */
    virtual void OnFirmwareUpdateProgressStepPartialProgress(EFirmwareUpdateStepType step, double percent) = 0;
    /** The time is the one estimated for the step. */
    virtual void OnFirmwareUpdateProgressStepEnd(EFirmwareUpdateStepType step, unsigned int time) = 0;
    virtual void OnFirmwareUpdateEnd() = 0;
    /** The update failed; instead of OnFirmwareUpdateEnd. */
    virtual void OnFirmwareUpdateError(const GenICam::GenericException& error) = 0;
};

/** The device that gets an update. Implementations throw GenICam exceptions on failure. */
class GENAPI_EXPORT IFirmwareUpdatableDevice
{
public:
    virtual ~IFirmwareUpdatableDevice();
    /** Before anything else: opens the device. */
    virtual void PrepareForFirmwareUpdate() = 0;
    /** Asked again after each reset: the node map of before is gone then. */
    virtual INodeMap& GetNodeMapOfDeviceToUpdate() = 0;
    virtual GenICam::gcstring GetDisplayName() = 0;
    /** Resets the device and returns when it is open again. Milliseconds: how long the package expects the reset to
     *  take at most, and how long to wait before looking for the device. */
    virtual void DeviceResetWhileUpdatingFirmware(unsigned int expectedTimeMs, unsigned int waitTimeMs) = 0;
    /** Last, also after a failure. */
    virtual void CleanupAfterFirmwareUpdate() = 0;
};

/** Reads packages, matches and applies updates. Without state: one per use or one for all. Threads: any. */
class GENAPI_EXPORT CFirmwareUpdater
{
public:
    /**
     * Reads and checks a whole package file and reports its updates.
     *
     * fileName: UTF-8. filter: null for every update, or a regular expression (RE2 syntax, as in packages) that
     * the update's id must match as a whole. Throws FileNotFoundException, FileIOException (reading), FormatException
     * (not a package, a damaged or a dishonest one; the text says what and where), InvalidArgumentException (no file
     * name, bad filter), OutOfRangeException (larger than the limits). What the collector throws passes through.
     */
    void ReadFirmwareUpdateInfos(const char* fileName, IFirmwareUpdateInfoCollector& collector,
                                 const char* filter = nullptr) const;

    /** Whether all conditions of the update hold for the device. Throws InvalidArgumentException (invalid info) and
     *  what reading the features throws; a feature that the device lacks does not match. */
    bool MatchesDevice(const CFirmwareUpdateInfo& updateInfo, INodeMap& nodeMap) const;

    /**
     * Applies the update. Conditions, the existence of every feature that the steps use, preconditions and package are
     * checked before anything is written.
     *
     * The observer may be null. On failure it is told OnFirmwareUpdateError (of an exception that is none of GenICam's:
     * a RuntimeException with its text), the device's CleanupAfterFirmwareUpdate is called, and the exception itself
     * goes on to the caller. Throws InvalidArgumentException (invalid info), LogicalErrorException (not for this
     * device, a precondition that does not hold, something that the device lacks, a package that changed since it was
     * read), what reading the package throws, TimeoutException and RuntimeException (a step that failed), and whatever
     * the device and the observer throw.
     */
    void ApplyUpdate(const CFirmwareUpdateInfo& updateInfo, IFirmwareUpdatableDevice& device,
                     IFirmwareUpdateProgressObserver* observer) const;
};

} // namespace GenApi
