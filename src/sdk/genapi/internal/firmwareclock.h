// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/genapi_testexport.h"

#include <cstdint>

namespace GenApi
{
namespace Internal
{

/** The time that an update measures and waits by; tests bring their own. */
class GENAPI_TEST_EXPORT IFirmwareClock
{
public:
    virtual ~IFirmwareClock();
    /** Milliseconds since any fixed point; never goes back. */
    virtual std::int64_t NowMs() = 0;
    /** Lets so much time pass between two looks at the device. */
    virtual void PassMs(std::int64_t milliseconds) = 0;
};

/** The steady clock. */
class GENAPI_TEST_EXPORT CFirmwareClock : public IFirmwareClock
{
public:
    ~CFirmwareClock() override;
    std::int64_t NowMs() override;
    void PassMs(std::int64_t milliseconds) override;
};

} // namespace Internal
} // namespace GenApi
