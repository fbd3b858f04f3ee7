#include "support/capture/DxgiMonitor.h"

#include "support/capture/FrameScaler.h"

#include <utility>

using Microsoft::WRL::ComPtr;

DxgiMonitor::DxgiMonitor(ComPtr<IDXGIAdapter1> adapter, ComPtr<IDXGIOutput1> output)
    : m_adapter(std::move(adapter))
    , m_output(std::move(output))
{
}

ScreenGrabber::Result DxgiMonitor::grab(QSize outputSize, bool force, cv::Mat& frame)
{
    if (!ensureDuplication())
        return ScreenGrabber::Result::Failed;
    const ScreenGrabber::Result result = fetch();
    if (result == ScreenGrabber::Result::Failed)
        return result;
    if (result == ScreenGrabber::Result::Unchanged && (!force || !m_staging))
        return result;
    frame = scaleStaging(outputSize);
    return frame.empty() ? ScreenGrabber::Result::Failed : ScreenGrabber::Result::Frame;
}

bool DxgiMonitor::ensureDuplication()
{
    if (m_duplication)
        return true;
    // An adapter that is named asks for the unknown driver type.
    if (!m_device && FAILED(D3D11CreateDevice(m_adapter.Get(), D3D_DRIVER_TYPE_UNKNOWN, nullptr, 0, nullptr,
                                              0, D3D11_SDK_VERSION, &m_device, nullptr, &m_context))) {
        m_device.Reset();
        return false;
    }
    // Refused while the secure desktop is shown, say: the next grab tries again. A device is too dear to be
    // made for every try.
    if (FAILED(m_output->DuplicateOutput(m_device.Get(), &m_duplication))) {
        m_duplication.Reset();
        if (FAILED(m_device->GetDeviceRemovedReason()))
            m_device.Reset();
        return false;
    }
    DXGI_OUTDUPL_DESC desc{};
    m_duplication->GetDesc(&desc);
    m_rotation = desc.Rotation;
    m_staging.Reset();
    return true;
}

ScreenGrabber::Result DxgiMonitor::fetch()
{
    DXGI_OUTDUPL_FRAME_INFO info{};
    ComPtr<IDXGIResource> resource;
    const HRESULT result = m_duplication->AcquireNextFrame(0, &info, &resource);
    if (result == DXGI_ERROR_WAIT_TIMEOUT)
        return ScreenGrabber::Result::Unchanged;
    if (FAILED(result)) { // the mode changed or the desktop was switched: begin again
        m_duplication.Reset();
        m_staging.Reset();
        return ScreenGrabber::Result::Failed;
    }
    const bool isPointerOnly = info.LastPresentTime.QuadPart == 0 && m_staging;
    const bool copied = isPointerOnly || copyToStaging(resource.Get());
    m_duplication->ReleaseFrame();
    if (!copied)
        return ScreenGrabber::Result::Failed;
    return isPointerOnly ? ScreenGrabber::Result::Unchanged : ScreenGrabber::Result::Frame;
}

bool DxgiMonitor::copyToStaging(IDXGIResource* resource)
{
    ComPtr<ID3D11Texture2D> picture;
    if (FAILED(resource->QueryInterface(IID_PPV_ARGS(&picture))))
        return false;
    if (!m_staging) {
        D3D11_TEXTURE2D_DESC desc{};
        picture->GetDesc(&desc);
        desc.MipLevels = 1;
        desc.ArraySize = 1;
        desc.Usage = D3D11_USAGE_STAGING;
        desc.BindFlags = 0;
        desc.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
        desc.MiscFlags = 0;
        if (FAILED(m_device->CreateTexture2D(&desc, nullptr, &m_staging)))
            return false;
    }
    m_context->CopyResource(m_staging.Get(), picture.Get());
    return true;
}

cv::Mat DxgiMonitor::scaleStaging(QSize outputSize)
{
    D3D11_TEXTURE2D_DESC desc{};
    m_staging->GetDesc(&desc);
    D3D11_MAPPED_SUBRESOURCE mapped{};
    if (FAILED(m_context->Map(m_staging.Get(), 0, D3D11_MAP_READ, 0, &mapped)))
        return {};
    SourcePixels pixels;
    pixels.data = static_cast<const uchar*>(mapped.pData);
    pixels.stride = mapped.RowPitch;
    pixels.size = QSize(int(desc.Width), int(desc.Height));
    // The picture comes as the panel scans it.
    pixels.quarterTurns = qMax(0, int(m_rotation) - int(DXGI_MODE_ROTATION_IDENTITY));
    const cv::Mat frame = scaleFrame(pixels, outputSize);
    m_context->Unmap(m_staging.Get(), 0);
    return frame;
}
