// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "utils/exceptions.h"

#include <gtest/gtest.h>

namespace
{

using namespace Core::Exception;

template <class T> class ExceptionFamily : public ::testing::Test
{
};

using AllExceptions = ::testing::Types<InvalidOperationException, ObjectDisposedException, ArgumentException,
                                       ArgumentOutOfRangeException, TimeoutException, AccessException, RuntimeException,
                                       FileNotFoundException, FileIOException, FormatException, BadAllocException>;
TYPED_TEST_SUITE(ExceptionFamily, AllExceptions);

TYPED_TEST(ExceptionFamily, isCaughtAsTheBaseWithItsText)
{
    try
    {
        throw TypeParam(QStringLiteral("K\u00f6nnte nicht"));
    }
    catch (const BaseException& e)
    {
        EXPECT_EQ(e.message(), QStringLiteral("K\u00f6nnte nicht"));
        EXPECT_STREQ(e.what(), u8"K\u00f6nnte nicht");
        return;
    }
    FAIL();
}

TEST(Exceptions, aDisposedObjectIsAnInvalidOperation)
{
    EXPECT_THROW(throw ObjectDisposedException(QString()), InvalidOperationException);
}

TEST(Exceptions, anArgumentOutOfRangeIsAnArgumentException)
{
    EXPECT_THROW(throw ArgumentOutOfRangeException(QString()), ArgumentException);
}

TEST(Exceptions, aCopyOutlivesTheOriginal)
{
    auto original = std::make_unique<RuntimeException>(QStringLiteral("text"));
    const RuntimeException copy = *original;
    original.reset();
    EXPECT_STREQ(copy.what(), "text");
}

} // namespace
