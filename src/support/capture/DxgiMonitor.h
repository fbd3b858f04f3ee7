#pragma once

#include "support/capture/ScreenGrabber.h"

#include <d3d11.h>
#include <dxgi1_2.h>
#include <wrl/client.h>

/// Desktop duplication of one monitor. Capture thread only.
class DxgiMonitor
{
public:
    DxgiMonitor(Microsoft::WRL::ComPtr<IDXGIAdapter1> adapter, Microsoft::WRL::ComPtr<IDXGIOutput1> output);

    ScreenGrabber::Result grab(QSize outputSize, bool force, cv::Mat& frame);

private:
    bool ensureDuplication();
    /// Takes the newest picture over into the staging texture. Unchanged where there is no newer one.
    ScreenGrabber::Result fetch();
    bool copyToStaging(IDXGIResource* resource);
    cv::Mat scaleStaging(QSize outputSize);

    const Microsoft::WRL::ComPtr<IDXGIAdapter1> m_adapter;
    const Microsoft::WRL::ComPtr<IDXGIOutput1> m_output;
    Microsoft::WRL::ComPtr<ID3D11Device> m_device;
    Microsoft::WRL::ComPtr<ID3D11DeviceContext> m_context;
    Microsoft::WRL::ComPtr<IDXGIOutputDuplication> m_duplication;
    Microsoft::WRL::ComPtr<ID3D11Texture2D> m_staging; ///< the last picture
    DXGI_MODE_ROTATION m_rotation = DXGI_MODE_ROTATION_IDENTITY;
};
