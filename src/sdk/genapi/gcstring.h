// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/genapi_export.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace GenICam
{

/** A UTF-8 text as GenICam interfaces pass it. A null character pointer makes an empty text. */
class gcstring
{
public:
    gcstring() = default;
    gcstring(const char* text) : m_text(text == nullptr ? "" : text) {}
    gcstring(const char* text, std::size_t length) : m_text(text == nullptr ? "" : std::string(text, length)) {}
    gcstring(std::string text) : m_text(std::move(text)) {}

    const char* c_str() const noexcept { return m_text.c_str(); }
    const std::string& str() const noexcept { return m_text; }
    std::size_t length() const noexcept { return m_text.length(); }
    std::size_t size() const noexcept { return m_text.size(); }
    bool empty() const noexcept { return m_text.empty(); }
    operator const char*() const noexcept { return m_text.c_str(); }

    gcstring& operator+=(const gcstring& other)
    {
        m_text += other.m_text;
        return *this;
    }

    friend gcstring operator+(gcstring left, const gcstring& right)
    {
        left += right;
        return left;
    }
    friend bool operator==(const gcstring& l, const gcstring& r) { return l.m_text == r.m_text; }
    friend bool operator!=(const gcstring& l, const gcstring& r) { return l.m_text != r.m_text; }
    friend bool operator==(const gcstring& l, const char* r) { return l.m_text == (r == nullptr ? "" : r); }
    friend bool operator!=(const gcstring& l, const char* r) { return !(l == r); }
    friend bool operator==(const char* l, const gcstring& r) { return r == l; }
    friend bool operator!=(const char* l, const gcstring& r) { return !(r == l); }
    friend bool operator<(const gcstring& l, const gcstring& r) { return l.m_text < r.m_text; }
    friend std::ostream& operator<<(std::ostream& stream, const gcstring& text) { return stream << text.m_text; }

private:
    std::string m_text;
};

using gcstring_vector = std::vector<gcstring>;

} // namespace GenICam
