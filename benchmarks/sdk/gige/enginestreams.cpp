// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "enginestreams.h"

#include "support/figures.h"
#include "transports/gige/internal/socketbuffer.h"

#include <arv.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

namespace Benchmarks
{

namespace
{

constexpr std::chrono::seconds Patience(60);
constexpr int Buffers = 32;
constexpr int PacketBytes = 9000;

void check(GError* pError, const char* what)
{
    if (pError != nullptr)
    {
        const std::string text = std::string(what) + ": " + pError->message;
        g_error_free(pError);
        throw std::runtime_error(text);
    }
}

/** One camera of the engine. The callback runs on the engine's thread of that stream. */
class CEngineStream
{
public:
    CEngineStream(int index, bool withPacketSocket)
    {
        GError* pError = nullptr;
        const std::string address = "127.0.0." + std::to_string(index + 1);
        GInetAddress* pAdapter = g_inet_address_new_from_string("127.0.0.1");
        GInetAddress* pCamera = g_inet_address_new_from_string(address.c_str());
        m_pDevice = arv_gv_device_new(pAdapter, pCamera, &pError);
        g_object_unref(pAdapter);
        g_object_unref(pCamera);
        check(pError, "opening");
        arv_gv_device_set_stream_options(ARV_GV_DEVICE(m_pDevice), withPacketSocket
                                                                       ? ARV_GV_STREAM_OPTION_NONE
                                                                       : ARV_GV_STREAM_OPTION_PACKET_SOCKET_DISABLED);
        arv_device_set_integer_feature_value(m_pDevice, "GevSCPSPacketSize", PacketBytes, &pError);
        check(pError, "packet size");
        const gint64 payload = arv_device_get_integer_feature_value(m_pDevice, "PayloadSize", &pError);
        check(pError, "payload size");
        m_pStream = arv_device_create_stream(m_pDevice, &CEngineStream::onEvent, this, &pError);
        check(pError, "stream");
        const auto bytes = static_cast<std::size_t>(payload);
        const auto socketBytes =
            Velmo::GigE::Internal::ChooseSocketBuffer(bytes, Velmo::GigE::Internal::ReceiveBufferLimit()).bytes;
        Velmo::GigE::Internal::ApplySocketBuffer(0x7F000001, arv_gv_stream_get_port(ARV_GV_STREAM(m_pStream)),
                                                 socketBytes);
        g_object_set(m_pStream, "socket-buffer", ARV_GV_STREAM_SOCKET_BUFFER_FIXED, "socket-buffer-size",
                     static_cast<gint>(socketBytes), nullptr);
        for (int i = 0; i < Buffers; ++i)
        {
            arv_stream_push_buffer(m_pStream, arv_buffer_new(bytes, nullptr));
        }
    }
    ~CEngineStream()
    {
        arv_device_execute_command(m_pDevice, "AcquisitionStop", nullptr);
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_isStarted = false;
        }
        g_clear_object(&m_pStream);
        g_clear_object(&m_pDevice);
    }
    CEngineStream(const CEngineStream&) = delete;
    CEngineStream& operator=(const CEngineStream&) = delete;

    void start()
    {
        GError* pError = nullptr;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_isStarted = true;
        }
        arv_device_execute_command(m_pDevice, "AcquisitionStart", &pError);
        check(pError, "starting");
    }
    bool waitForImages(std::uint64_t count)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_changed.wait_for(lock, Patience, [&] { return m_counter.images() >= count; });
    }
    CBlockCounter counter() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_counter;
    }

private:
    static void onEvent(void* pUser, ArvStreamCallbackType type, ArvBuffer*)
    {
        auto* pThis = static_cast<CEngineStream*>(pUser);
        const std::lock_guard<std::mutex> lock(pThis->m_mutex);
        if (type != ARV_STREAM_CALLBACK_TYPE_BUFFER_DONE || !pThis->m_isStarted)
        {
            return;
        }
        while (ArvBuffer* pBuffer = arv_stream_try_pop_buffer(pThis->m_pStream))
        {
            pThis->m_counter.add(arv_buffer_get_frame_id(pBuffer),
                                 arv_buffer_get_status(pBuffer) == ARV_BUFFER_STATUS_SUCCESS);
            arv_stream_push_buffer(pThis->m_pStream, pBuffer);
        }
        pThis->m_changed.notify_all();
    }

    ArvDevice* m_pDevice = nullptr;
    ArvStream* m_pStream = nullptr;
    mutable std::mutex m_mutex; // guards all below
    std::condition_variable m_changed;
    bool m_isStarted = false; // the stream object is there
    CBlockCounter m_counter;
};

} // namespace

SStreamFigures streamThroughTheEngine(int cameras, int seconds, bool withPacketSocket)
{
    std::vector<std::unique_ptr<CEngineStream>> streams;
    for (int i = 0; i < cameras; ++i)
    {
        streams.push_back(std::make_unique<CEngineStream>(i, withPacketSocket));
    }
    for (auto& pStream : streams)
    {
        pStream->start();
    }
    for (auto& pStream : streams)
    {
        if (!pStream->waitForImages(2))
        {
            throw std::runtime_error("A camera does not stream through the engine.");
        }
    }
    const auto sum = [&streams]
    {
        std::pair<std::uint64_t, std::uint64_t> total{0, 0};
        for (const auto& pStream : streams)
        {
            const CBlockCounter counter = pStream->counter();
            total.first += counter.images();
            total.second += counter.losses();
        }
        return total;
    };
    CStreamWindow window;
    const auto before = sum();
    window.begin(before.first, before.second);
    std::mutex mutex;
    std::unique_lock<std::mutex> lock(mutex);
    std::condition_variable never;
    never.wait_for(lock, std::chrono::seconds(seconds), [] { return false; });
    const auto after = sum();
    return window.end(after.first, after.second);
}

double findByTheEngine()
{
    const double start = nowMicroseconds();
    arv_update_device_list();
    return (nowMicroseconds() - start) / 1e3;
}

} // namespace Benchmarks
