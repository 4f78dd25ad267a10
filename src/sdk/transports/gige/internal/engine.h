// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <arv.h>

#include <memory>
#include <string>

namespace Velmo::GigE::Internal
{

/** Holds one reference of an engine object. */
struct SObjectUnref
{
    void operator()(void* pObject) const { g_object_unref(pObject); }
};
template <class T> using ObjectPtr = std::unique_ptr<T, SObjectUnref>;

/** Receives the error of an engine call and frees it. */
class CEngineError
{
public:
    CEngineError() = default;
    ~CEngineError() { g_clear_error(&m_pError); }
    CEngineError(const CEngineError&) = delete;
    CEngineError& operator=(const CEngineError&) = delete;

    GError** Receive()
    {
        g_clear_error(&m_pError);
        return &m_pError;
    }
    bool IsSet() const { return m_pError != nullptr; }
    std::string Text() const { return m_pError == nullptr ? "no reason given" : m_pError->message; }
    /** Throws the GenICam exception of the error's kind with what failed in front. */
    [[noreturn]] void Throw(const std::string& whatFailed) const;

private:
    GError* m_pError = nullptr;
};

} // namespace Velmo::GigE::Internal
