// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/firmwarepattern.h"

#include "genapi/exceptions.h"

#include <re2/re2.h>

namespace GenApi
{
namespace Internal
{
namespace
{

// Bytes for the compiled expression and the matcher's states; an expression that needs more is refused.
constexpr std::int64_t MaxPatternMemory = 1 << 20;

RE2::Options PatternOptions()
{
    RE2::Options options;
    options.set_log_errors(false);
    options.set_max_mem(MaxPatternMemory);
    return options;
}

} // namespace

CFirmwarePattern::CFirmwarePattern(const std::string& expression)
    : m_expression(std::make_unique<RE2>(expression, PatternOptions()))
{
    if (!m_expression->ok())
    {
        GENICAM_THROW(InvalidArgumentException,
                      "The regular expression '" + expression + "' is not valid: " + m_expression->error());
    }
}

CFirmwarePattern::~CFirmwarePattern() = default;

bool CFirmwarePattern::MatchesWhole(const std::string& text) const
{
    return RE2::FullMatch(text, *m_expression);
}

int CFirmwarePattern::CaptureCount() const
{
    return m_expression->NumberOfCapturingGroups();
}

bool CFirmwarePattern::CaptureWhole(const std::string& text, std::string& captured) const
{
    re2::StringPiece group[2];
    if (!m_expression->Match(text, 0, text.size(), RE2::ANCHOR_BOTH, group, 2) || group[1].data() == nullptr)
    {
        return false;
    }
    captured.assign(group[1].data(), group[1].size());
    return true;
}

} // namespace Internal
} // namespace GenApi
