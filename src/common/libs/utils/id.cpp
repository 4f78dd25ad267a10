// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "utils/id.h"

namespace Core
{

CId::CId(const char* text) : m_text(text) {}

CId::CId(const QString& text) : m_text(text.toUtf8()) {}

} // namespace Core
