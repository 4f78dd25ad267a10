// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/hostexceptions.h"

#include "utils/exceptions.h"

namespace Plugin::CameraPool::Internal
{

namespace
{

/** Throws a Host when the exception is an Sdk. */
template <class Sdk, class Host> void throwIf(const GenICam::GenericException& e)
{
    if (dynamic_cast<const Sdk*>(&e) != nullptr)
    {
        throw Host(QString::fromUtf8(e.GetDescription()));
    }
}

void throwIfCommonKind(const GenICam::GenericException& e)
{
    using namespace Core::Exception;
    throwIf<GenICam::InvalidArgumentException, ArgumentException>(e);
    throwIf<GenICam::OutOfRangeException, ArgumentOutOfRangeException>(e);
    throwIf<GenICam::AccessException, InvalidOperationException>(e);
    throwIf<GenICam::TimeoutException, TimeoutException>(e);
    throwIf<GenICam::LogicalErrorException, InvalidOperationException>(e);
    throwIf<GenICam::BadAllocException, BadAllocException>(e);
}

} // namespace

void throwAsHostException(const GenICam::GenericException& e)
{
    throwIfCommonKind(e);
    throw Core::Exception::RuntimeException(QString::fromUtf8(e.GetDescription()));
}

void throwFileFailureAsHostException(const GenICam::GenericException& e)
{
    using namespace Core::Exception;
    throwIf<GenICam::FormatException, FormatException>(e);
    throwIf<GenICam::FileIOException, FileIOException>(e);
    throwIf<GenICam::FileNotFoundException, FileNotFoundException>(e);
    throwIfCommonKind(e);
    throwIf<GenICam::RuntimeException, RuntimeException>(e);
    throw BaseException(QString::fromUtf8(e.GetDescription()));
}

} // namespace Plugin::CameraPool::Internal
