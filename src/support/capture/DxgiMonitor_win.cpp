#include "support/capture/DxgiMonitor.h"

#include "support/capture/FrameScaler.h"

#include <QDebug>
#include <utility>
#include <vector>

using Microsoft::WRL::ComPtr;

namespace {

constexpr double kUsualWhite = 2.5; // 200 nits, in units of 80
constexpr qint64 kAskWhiteMs = 2000;
constexpr qint64 kDrawnMs = 200;
constexpr qint64 kRestMs = 15000; // longer than the slowest effect's pause

qint64 nowMs()
{
    return qint64(GetTickCount64());
}

const char* reasonOf(HRESULT code)
{
    switch (code) {
    case E_ACCESSDENIED:
        return "the system shows its secure desktop";
    case DXGI_ERROR_ACCESS_LOST:
        return "the desktop or its mode was switched";
    case DXGI_ERROR_MODE_CHANGE_IN_PROGRESS:
        return "the mode is being switched";
    case DXGI_ERROR_SESSION_DISCONNECTED:
        return "the session shows on no screen";
    case DXGI_ERROR_NOT_CURRENTLY_AVAILABLE:
        return "too many programs read it";
    case DXGI_ERROR_UNSUPPORTED:
        return "its graphics adapter does not give it out";
    case DXGI_ERROR_DEVICE_REMOVED:
    case DXGI_ERROR_DEVICE_RESET:
        return "the graphics adapter was reset";
    default:
        return "the system refuses it";
    }
}

bool isHdr(IDXGIOutput1* output)
{
    ComPtr<IDXGIOutput6> described;
    DXGI_OUTPUT_DESC1 desc{};
    return SUCCEEDED(output->QueryInterface(IID_PPV_ARGS(&described))) &&
           SUCCEEDED(described->GetDesc1(&desc)) &&
           desc.ColorSpace == DXGI_COLOR_SPACE_RGB_FULL_G2084_NONE_P2020;
}

template <typename Info>
bool ask(DISPLAYCONFIG_DEVICE_INFO_TYPE type, LUID adapter, UINT32 id, Info& info)
{
    info.header.type = type;
    info.header.size = sizeof info;
    info.header.adapterId = adapter;
    info.header.id = id;
    return DisplayConfigGetDeviceInfo(&info.header) == ERROR_SUCCESS;
}

/// How bright the user has set the white of what knows no high dynamic range, in units of 80 nits; 0 where
/// the system does not say.
double whiteOf(const QString& display)
{
    UINT32 pathCount = 0, modeCount = 0;
    if (GetDisplayConfigBufferSizes(QDC_ONLY_ACTIVE_PATHS, &pathCount, &modeCount) != ERROR_SUCCESS)
        return 0;
    std::vector<DISPLAYCONFIG_PATH_INFO> paths(pathCount);
    std::vector<DISPLAYCONFIG_MODE_INFO> modes(modeCount);
    if (QueryDisplayConfig(QDC_ONLY_ACTIVE_PATHS, &pathCount, paths.data(), &modeCount, modes.data(),
                           nullptr) != ERROR_SUCCESS)
        return 0;
    paths.resize(pathCount);
    for (const DISPLAYCONFIG_PATH_INFO& path : paths) {
        DISPLAYCONFIG_SOURCE_DEVICE_NAME name{};
        DISPLAYCONFIG_SDR_WHITE_LEVEL level{};
        if (ask(DISPLAYCONFIG_DEVICE_INFO_GET_SOURCE_NAME, path.sourceInfo.adapterId, path.sourceInfo.id,
                name) &&
            QString::fromWCharArray(name.viewGdiDeviceName) == display &&
            ask(DISPLAYCONFIG_DEVICE_INFO_GET_SDR_WHITE_LEVEL, path.targetInfo.adapterId, path.targetInfo.id,
                level))
            return double(level.SDRWhiteLevel) / 1000;
    }
    return 0;
}

} // namespace

DxgiMonitor::DxgiMonitor()
{
    m_toBytes.setWhite(kUsualWhite);
}

void DxgiMonitor::setOutput(ComPtr<IDXGIAdapter1> adapter, ComPtr<IDXGIOutput1> output)
{
    letGo();
    m_adapter = std::move(adapter);
    m_output = std::move(output);
    DXGI_OUTPUT_DESC desc{};
    if (SUCCEEDED(m_output->GetDesc(&desc)))
        m_name = QString::fromWCharArray(desc.DeviceName);
    m_askWhiteMs = 0;
    m_pause.reset();
    m_retryMs = 0;
}

ScreenGrabber::Result DxgiMonitor::grab(QSize outputSize, bool force, cv::Mat& frame)
{
    m_grabbedMs = nowMs();
    if (!ensureDuplication())
        return ScreenGrabber::Result::Failed;
    const ScreenGrabber::Result result = fetch();
    const bool isAgain = result == ScreenGrabber::Result::Unchanged && force && m_isDrawn;
    return result == ScreenGrabber::Result::Frame || isAgain ? scaleStaging(outputSize, frame) : result;
}

bool DxgiMonitor::takeFailed()
{
    return std::exchange(m_hasFailed, false);
}

void DxgiMonitor::rest()
{
    if (m_device && nowMs() - m_grabbedMs > kRestMs)
        letGo();
}

void DxgiMonitor::letGo()
{
    m_duplication.Reset();
    m_staging.Reset();
    m_context.Reset();
    m_device.Reset();
}

bool DxgiMonitor::ensureDuplication()
{
    if (m_duplication)
        return true;
    if (nowMs() < m_retryMs)
        return false;
    const HRESULT result = duplicate();
    if (FAILED(result)) {
        fail(result);
        return false;
    }
    if (std::exchange(m_trouble, S_OK) != S_OK)
        qInfo().noquote() << "[DeskDuplManager]: Reading" << m_name << "again";
    DXGI_OUTDUPL_DESC desc{};
    m_duplication->GetDesc(&desc);
    m_rotation = desc.Rotation;
    m_isDrawn = false;
    m_drawnMs = nowMs() + kDrawnMs;
    return true;
}

HRESULT DxgiMonitor::duplicate()
{
    // An adapter that is named asks for the unknown driver type.
    const HRESULT made =
        m_device ? S_OK
                 : D3D11CreateDevice(m_adapter.Get(), D3D_DRIVER_TYPE_UNKNOWN, nullptr, 0, nullptr, 0,
                                     D3D11_SDK_VERSION, &m_device, nullptr, &m_context);
    if (FAILED(made))
        return made;
    // Of a screen with high dynamic range the system's own conversion to bytes cuts off what is bright.
    ComPtr<IDXGIOutput5> output;
    if (isHdr(m_output.Get()) && SUCCEEDED(m_output.As(&output))) {
        constexpr DXGI_FORMAT kFormats[] = {DXGI_FORMAT_R16G16B16A16_FLOAT, DXGI_FORMAT_B8G8R8A8_UNORM};
        if (SUCCEEDED(output->DuplicateOutput1(m_device.Get(), 0, 2, kFormats, &m_duplication)))
            return S_OK;
    }
    return m_output->DuplicateOutput(m_device.Get(), &m_duplication);
}

ScreenGrabber::Result DxgiMonitor::fail(HRESULT why)
{
    if (std::exchange(m_trouble, why) != why)
        qWarning().noquote().nospace() << "[DeskDuplManager]: Cannot read " << m_name << ", " << reasonOf(why)
                                       << " (0x" << QString::number(quint32(why), 16) << "); trying again";
    m_hasFailed = true;
    m_retryMs = nowMs() + m_pause.next(nowMs());
    m_duplication.Reset();
    m_staging.Reset();
    // A device is too dear to be made for every try.
    if (m_device && FAILED(m_device->GetDeviceRemovedReason()))
        letGo();
    return ScreenGrabber::Result::Failed;
}

ScreenGrabber::Result DxgiMonitor::fetch()
{
    DXGI_OUTDUPL_FRAME_INFO info{};
    ComPtr<IDXGIResource> resource;
    const HRESULT result = m_duplication->AcquireNextFrame(0, &info, &resource);
    if (FAILED(result) && result != DXGI_ERROR_WAIT_TIMEOUT)
        return fail(result);
    if (SUCCEEDED(result)) {
        const bool isDrawn = info.LastPresentTime.QuadPart != 0; // else it is news of the pointer
        const HRESULT copied = isDrawn || !m_isDrawn ? copyToStaging(resource.Get()) : S_OK;
        m_duplication->ReleaseFrame();
        if (FAILED(copied))
            return fail(copied);
        m_isDrawn = m_isDrawn || isDrawn;
        if (isDrawn)
            return ScreenGrabber::Result::Frame;
    }
    // The first picture may come before anything was drawn into it, and is black then.
    if (m_isDrawn || !m_staging || nowMs() < m_drawnMs)
        return ScreenGrabber::Result::Unchanged;
    m_isDrawn = true;
    return ScreenGrabber::Result::Frame;
}

HRESULT DxgiMonitor::copyToStaging(IDXGIResource* resource)
{
    ComPtr<ID3D11Texture2D> picture;
    const HRESULT asked = resource->QueryInterface(IID_PPV_ARGS(&picture));
    if (FAILED(asked))
        return asked;
    D3D11_TEXTURE2D_DESC desc{}, kept{};
    picture->GetDesc(&desc);
    if (m_staging)
        m_staging->GetDesc(&kept);
    // What does not fit would not be copied, and nobody told.
    if (desc.Width != kept.Width || desc.Height != kept.Height || desc.Format != kept.Format) {
        desc.MipLevels = 1;
        desc.ArraySize = 1;
        desc.Usage = D3D11_USAGE_STAGING;
        desc.BindFlags = 0;
        desc.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
        desc.MiscFlags = 0;
        const HRESULT made = m_device->CreateTexture2D(&desc, nullptr, &m_staging);
        if (FAILED(made))
            return made;
    }
    m_context->CopyResource(m_staging.Get(), picture.Get());
    return S_OK;
}

ScreenGrabber::Result DxgiMonitor::scaleStaging(QSize outputSize, cv::Mat& frame)
{
    D3D11_TEXTURE2D_DESC desc{};
    m_staging->GetDesc(&desc);
    D3D11_MAPPED_SUBRESOURCE mapped{};
    const HRESULT result = m_context->Map(m_staging.Get(), 0, D3D11_MAP_READ, 0, &mapped);
    if (FAILED(result))
        return fail(result);
    frame = scale(mapped, desc, outputSize);
    m_context->Unmap(m_staging.Get(), 0);
    return ScreenGrabber::Result::Frame;
}

cv::Mat DxgiMonitor::scale(const D3D11_MAPPED_SUBRESOURCE& mapped, const D3D11_TEXTURE2D_DESC& desc,
                           QSize outputSize)
{
    SourcePixels pixels;
    pixels.data = static_cast<const uchar*>(mapped.pData);
    pixels.stride = mapped.RowPitch;
    pixels.size = QSize(int(desc.Width), int(desc.Height));
    // The picture comes as the panel scans it.
    pixels.quarterTurns = qMax(0, int(m_rotation) - int(DXGI_MODE_ROTATION_IDENTITY));
    cv::Mat bytes;
    if (desc.Format == DXGI_FORMAT_R16G16B16A16_FLOAT) {
        askWhite();
        bytes = m_toBytes.convert({static_cast<const quint16*>(mapped.pData), pixels.stride, pixels.size},
                                  pixels.quarterTurns % 2 ? outputSize.transposed() : outputSize);
        pixels.data = bytes.data;
        pixels.stride = qint64(bytes.step);
        pixels.size = QSize(bytes.cols, bytes.rows);
        std::swap(pixels.redByte, pixels.blueByte);
    }
    return scaleFrame(pixels, outputSize);
}

void DxgiMonitor::askWhite()
{
    if (nowMs() < m_askWhiteMs)
        return;
    m_askWhiteMs = nowMs() + kAskWhiteMs;
    m_toBytes.setWhite(whiteOf(m_name));
}
