// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/hostexceptions.h"
#include "unit/common/plugins/camerapool/testing/compressionfixture.h"
#include "utils/exceptions.h"

#include <functional>
#include <new>
#include <typeinfo>

namespace
{

using Plugin::CameraPool::Internal::throwAsHostException;
using Plugin::CameraPool::Internal::withHostExceptions;
using ::Test::EStep;
namespace Host = Core::Exception;

/** What the work throws must be exactly a Host with that text. */
template <class Exception> void expectThrown(const std::function<void()>& work, const char* text)
{
    try
    {
        work();
        ADD_FAILURE() << "nothing was thrown";
    }
    catch (const Host::BaseException& e)
    {
        EXPECT_STREQ(typeid(e).name(), typeid(Exception).name());
        EXPECT_EQ(e.message(), QString::fromUtf8(text));
    }
}

class CameraCompression : public ::Test::CompressionFixture
{
protected:
    QSharedPointer<CCamera> device() const { return qSharedPointerObjectCast<CCamera>(camera()); }
    template <class Exception> void expectOfAllReads(const char* text) const
    {
        const auto pCamera = device();
        expectThrown<Exception>([&] { pCamera->getCompressionMode(); }, text);
        expectThrown<Exception>([&] { pCamera->getCompressionDescriptor(); }, text);
        expectThrown<Exception>([&] { pCamera->getCompressionDescriptorHash(); }, text);
        expectThrown<Exception>([&] { pCamera->getImageSizeForDecompression(); }, text);
    }
    /** The so-many-th read of a register from now on is preceded by the change. */
    void beforeRead(int ordinal, std::function<void()> change) const
    {
        m_transport->SetHook(EStep::ReadRegister,
                             [left = std::make_shared<int>(ordinal), change = std::move(change)](const std::string&)
                             {
                                 if (--*left == 0)
                                 {
                                     change();
                                 }
                             });
    }
    void setLengthBeforeSecondCall(const char* feature, std::int64_t length) const
    {
        // The first call reads the length only.
        beforeRead(2, [this, feature, length] { m_transport->SetRegister(s_serial, feature, length); });
    }
};

TEST_F(CameraCompression, readsWhatTheCameraTells)
{
    const auto pCamera = device();
    for (const auto mode :
         {Velmo::CompressionMode_Off, Velmo::CompressionMode_Lossless, Velmo::CompressionMode_FixedRatio})
    {
        setMode(mode);
        EXPECT_EQ(pCamera->getCompressionMode(), mode);
    }
    EXPECT_EQ(pCamera->getCompressionDescriptor(), qBytes(m_descriptor));
    EXPECT_EQ(pCamera->getCompressionDescriptorHash(), qBytes(m_hash));
    EXPECT_EQ(pCamera->getImageSizeForDecompression(), 64U * 48U);
}

TEST_F(CameraCompression, aModeOfThreeIsUnknown)
{
    for (const int mode : {3, 77, -1})
    {
        setMode(mode);
        expectThrown<Host::RuntimeException>([&] { device()->getCompressionMode(); },
                                             "Unknown compression mode found.");
    }
}

TEST_F(CameraCompression, aDescriptorSizeOfZeroIsInvalid)
{
    m_transport->SetRegister(s_serial, "ImageCompressionDescriptorLength", 0);
    expectThrown<Host::RuntimeException>([&] { device()->getCompressionDescriptor(); },
                                         "Invalid compression descriptor size found.");
}

TEST_F(CameraCompression, aHashSizeOfZeroIsInvalid)
{
    m_transport->SetRegister(s_serial, "ImageCompressionDescriptorHashLength", 0);
    expectThrown<Host::RuntimeException>([&] { device()->getCompressionDescriptorHash(); },
                                         "Invalid compression descriptor hash size found.");
}

TEST_F(CameraCompression, aSecondCallThatReportsALargerDescriptorIsInvalid)
{
    setLengthBeforeSecondCall("ImageCompressionDescriptorLength", 64);
    expectThrown<Host::RuntimeException>([&] { device()->getCompressionDescriptor(); },
                                         "Invalid compression descriptor size found.");
    EXPECT_EQ(m_transport->GetRegister(s_serial, "ImageCompressionDescriptorLength"), 64) << "it did not grow";
}

TEST_F(CameraCompression, aSecondCallThatReportsALargerHashIsInvalid)
{
    setLengthBeforeSecondCall("ImageCompressionDescriptorHashLength", 20);
    expectThrown<Host::RuntimeException>([&] { device()->getCompressionDescriptorHash(); },
                                         "Invalid compression descriptor hash size found.");
    EXPECT_EQ(m_transport->GetRegister(s_serial, "ImageCompressionDescriptorHashLength"), 20) << "it did not grow";
}

TEST_F(CameraCompression, aSecondCallThatReportsNothingIsInvalid)
{
    setLengthBeforeSecondCall("ImageCompressionDescriptorLength", 0);
    expectThrown<Host::RuntimeException>([&] { device()->getCompressionDescriptor(); },
                                         "Invalid compression descriptor size found.");
}

TEST_F(CameraCompression, aSecondCallThatReportsLessShrinksTheResult)
{
    setLengthBeforeSecondCall("ImageCompressionDescriptorLength", 5);
    EXPECT_EQ(device()->getCompressionDescriptor(), qBytes(m_descriptor).mid(0, 5));
    setLengthBeforeSecondCall("ImageCompressionDescriptorHashLength", 3);
    EXPECT_EQ(device()->getCompressionDescriptorHash(), qBytes(m_hash).mid(0, 3));
}

TEST_F(CameraCompression, anAbsurdSizeIsAnExceptionToo)
{
    m_transport->SetRegister(s_serial, "ImageCompressionDescriptorLength", std::int64_t(1) << 40);
    EXPECT_THROW(device()->getCompressionDescriptor(), Host::RuntimeException);
    m_transport->SetRegister(s_serial, "ImageCompressionDescriptorHashLength", -1);
    EXPECT_THROW(device()->getCompressionDescriptorHash(), Host::BaseException);
}

TEST_F(CameraCompression, anImageSizeOfZeroOrBeyondThirtyTwoBitsIsInvalid)
{
    for (const std::int64_t bytes : {std::int64_t(0), std::int64_t(1) << 32})
    {
        m_transport->SetRegister(s_serial, "ImageCompressionDecodedSize", bytes);
        expectThrown<Host::RuntimeException>([&] { device()->getImageSizeForDecompression(); },
                                             "Invalid image size for decompression found.");
    }
    m_transport->SetRegister(s_serial, "ImageCompressionDecodedSize", 0xffffffff);
    EXPECT_EQ(device()->getImageSizeForDecompression(), 0xffffffffU);
}

TEST_F(CameraCompression, aCameraWithoutTheFeaturesIsAnInvalidOperation)
{
    const auto info = addSecondCamera();
    ASSERT_TRUE(m_pool->openDevice(info, false));
    const auto plain = qSharedPointerObjectCast<CCamera>(m_pool->findDevice(info));
    EXPECT_THROW(plain->getCompressionMode(), Host::InvalidOperationException);
    EXPECT_THROW(plain->getCompressionDescriptor(), Host::InvalidOperationException);
    EXPECT_THROW(plain->getCompressionDescriptorHash(), Host::InvalidOperationException);
    EXPECT_THROW(plain->getImageSizeForDecompression(), Host::InvalidOperationException);
}

TEST_F(CameraCompression, aClosedCameraIsAHostException)
{
    m_pool->closeDevice(m_info);
    EXPECT_THROW(device()->getCompressionMode(), Host::BaseException);
    EXPECT_THROW(device()->getCompressionDescriptor(), Host::BaseException);
}

#define EXPECT_MAPPED(sdk, host)                                                                                       \
    do                                                                                                                 \
    {                                                                                                                  \
        SCOPED_TRACE(#sdk);                                                                                            \
        const GenICam::sdk thrown("gr\xc3\xbc\xc3\x9f", __FILE__, __LINE__);                                           \
        throwOnRead(thrown);                                                                                           \
        expectOfAllReads<Host::host>("gr\xc3\xbc\xc3\x9f");                                                            \
        expectThrown<Host::host>([&] { throwAsHostException(thrown); }, "gr\xc3\xbc\xc3\x9f");                         \
    } while (false)

TEST_F(CameraCompression, invalidArgumentBecomesArgument)
{
    EXPECT_MAPPED(InvalidArgumentException, ArgumentException);
}

TEST_F(CameraCompression, outOfRangeBecomesArgumentOutOfRange)
{
    EXPECT_MAPPED(OutOfRangeException, ArgumentOutOfRangeException);
}

TEST_F(CameraCompression, accessBecomesInvalidOperation)
{
    EXPECT_MAPPED(AccessException, InvalidOperationException);
}

TEST_F(CameraCompression, timeoutStaysTimeout)
{
    EXPECT_MAPPED(TimeoutException, TimeoutException);
}

TEST_F(CameraCompression, logicalErrorBecomesInvalidOperation)
{
    EXPECT_MAPPED(LogicalErrorException, InvalidOperationException);
}

TEST_F(CameraCompression, badAllocStaysBadAlloc)
{
    EXPECT_MAPPED(BadAllocException, BadAllocException);
}

TEST_F(CameraCompression, runtimeStaysRuntime)
{
    EXPECT_MAPPED(RuntimeException, RuntimeException);
}

TEST_F(CameraCompression, everyOtherKindBecomesRuntime)
{
    EXPECT_MAPPED(GenericException, RuntimeException);
    EXPECT_MAPPED(PropertyException, RuntimeException);
    EXPECT_MAPPED(DynamicCastException, RuntimeException);
    EXPECT_MAPPED(FileIOException, RuntimeException);
    EXPECT_MAPPED(FormatException, RuntimeException);
}

TEST_F(CameraCompression, exceptionsOfOthersPassUnchanged)
{
    throwOnRead(42);
    EXPECT_THROW(device()->getCompressionMode(), int);
    EXPECT_THROW(device()->getCompressionDescriptor(), int);
    EXPECT_THROW(withHostExceptions([]() -> int { throw std::bad_alloc(); }), std::bad_alloc);
}

TEST_F(CameraCompression, outOfRangeOfTheSecondCallIsNotTakenForAGrownDescriptor)
{
    beforeRead(3, [] { throw GenICam::OutOfRangeException("no such address", __FILE__, __LINE__); });
    expectThrown<Host::ArgumentOutOfRangeException>([&] { device()->getCompressionDescriptor(); }, "no such address");
}

} // namespace
