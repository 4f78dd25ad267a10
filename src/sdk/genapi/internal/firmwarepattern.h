// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/genapi_testexport.h"

#include <memory>
#include <string>

namespace re2
{
class RE2;
}

namespace GenApi
{
namespace Internal
{

/**
 * A regular expression that is matched in time linear to the text and in bounded memory, whoever wrote it. Syntax:
 * that of the RE2 library, which is the usual one without back references and look-around.
 */
class GENAPI_TEST_EXPORT CFirmwarePattern
{
public:
    /** Throws InvalidArgumentException that quotes the expression and says what is wrong with it. */
    explicit CFirmwarePattern(const std::string& expression);
    ~CFirmwarePattern();
    CFirmwarePattern(const CFirmwarePattern&) = delete;
    CFirmwarePattern& operator=(const CFirmwarePattern&) = delete;

    bool MatchesWhole(const std::string& text) const;
    int CaptureCount() const;
    /** Matches the whole text and gives the first group; false when it does not match or the group took no part. */
    bool CaptureWhole(const std::string& text, std::string& captured) const;

private:
    std::unique_ptr<re2::RE2> m_expression;
};

} // namespace Internal
} // namespace GenApi
