// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/flash.h"
#include "simulator/internal/chunkkinds.h"
#include "simulator/internal/features.h"
#include "simulator/internal/registermemory.h"
#include "simulator/pixelformats.h"

#include <memory>

namespace Simulator::Internal
{

/**
 * The settings of a camera: its registers with their limits, locks and dependencies; no acquisition, no time.
 *
 * Errors: AccessException (read-only, locked), OutOfRangeException, InvalidArgumentException (unknown enumeration
 * value). A write that fails changes nothing. Threads: the owner's lock.
 */
class SIMULATOR_TEST_EXPORT CSettings
{
public:
    CSettings(const SCameraConfig& config, std::shared_ptr<SFlash> flash);

    const std::vector<SFeature>& GetFeatures() const { return m_features; }
    /** Null when there is none of that name. */
    const SFeature* FindFeature(const std::string& name) const;
    /** The feature whose register covers the address; null when there is none. */
    const SFeature* FindFeatureAt(std::int64_t address) const;

    /** Where the feature's register lies; of several the one that is selected now. */
    std::int64_t AddressOf(const SFeature& feature) const;

    CRegisterMemory& GetMemory() { return m_memory; }
    const CRegisterMemory& GetMemory() const { return m_memory; }

    /** Checks and stores one register of the feature; bytes are big-endian. isLocked: the stream's shape is fixed now.
     */
    void Write(const SFeature& feature, std::int64_t address, const std::uint8_t* data, std::int64_t length,
               bool isLocked);
    /** Register bytes of a value given as text: a number, a symbol, "true" or "false". */
    std::vector<std::uint8_t> Encode(const SFeature& feature, const std::string& text) const;
    std::string Decode(const SFeature& feature) const;

    void SaveUserSet();
    void LoadUserSet(std::uint32_t set);

    /** Does what ExposureAuto asks for; true when that changed the exposure. */
    bool AdjustExposure();
    /** Amplification of the scene by gain and exposure; 1 looks right. */
    double GetAmplification() const;

    const SPixelFormat& GetFormat() const;
    std::uint32_t GetWidth() const;
    std::uint32_t GetHeight() const;
    std::uint64_t GetImageBytes() const;
    bool IsCompressing() const;
    /** The image, compressed if it is sent so, and what is sent behind it; the most there can be. */
    std::uint64_t GetPayloadBytes() const;
    bool IsChunkModeActive() const;
    /** Whether chunk mode sends it. */
    bool IsChunkEnabled(EChunk chunk) const;
    /** Nanoseconds between frames under the present settings. */
    std::int64_t GetPeriodNs() const;

private:
    void SetFactoryValues();
    void ApplyConfiguredFeatures();
    void UpdateDerived();
    double MaxFrameRate() const;
    double MaximumOf(const SFeature& feature) const;
    void CheckValue(const SFeature& feature, const std::uint8_t* data) const;

    const SCameraConfig m_config;
    const std::shared_ptr<SFlash> m_flash;
    const std::vector<SFeature> m_features;
    const double m_referenceExposureUs; // looks right without gain
    CRegisterMemory m_memory;
    SFlash::Settings m_factory;
};

} // namespace Simulator::Internal
