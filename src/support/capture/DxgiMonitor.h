#pragma once

#include "support/audio/RetryPause.h"
#include "support/capture/HdrPixels.h"
#include "support/capture/ScreenGrabber.h"

#include <QString>
#include <d3d11.h>
#include <dxgi1_6.h>
#include <wrl/client.h>

/// Desktop duplication of one monitor. Capture thread only. The system ends it when the desktop is switched
/// (a question of the user account control, the lock screen), the mode changes or the adapter is reset, and
/// may refuse it for a while then: it is begun again, at intervals.
class DxgiMonitor
{
public:
    DxgiMonitor();

    /// Where the monitor is to be found from now on; comes before all else. What goes wrong is not told
    /// again.
    void setOutput(Microsoft::WRL::ComPtr<IDXGIAdapter1> adapter,
                   Microsoft::WRL::ComPtr<IDXGIOutput1> output);
    ScreenGrabber::Result grab(QSize outputSize, bool force, cv::Mat& frame);
    /// Whether a try has failed since the last call, so that a look at the monitors is worth while.
    bool takeFailed();
    /// Lets the duplication go when nobody has grabbed for some time: it costs the system, and so the games
    /// that are played, and there may be only a few.
    void rest();

private:
    bool ensureDuplication();
    HRESULT duplicate();
    /// Takes the newest picture over into the staging texture. Unchanged where there is no newer one.
    ScreenGrabber::Result fetch();
    HRESULT copyToStaging(IDXGIResource* resource);
    ScreenGrabber::Result scaleStaging(QSize outputSize, cv::Mat& frame);
    cv::Mat scale(const D3D11_MAPPED_SUBRESOURCE& mapped, const D3D11_TEXTURE2D_DESC& desc, QSize outputSize);
    void askWhite();
    ScreenGrabber::Result fail(HRESULT why);
    void letGo();

    Microsoft::WRL::ComPtr<IDXGIAdapter1> m_adapter;
    Microsoft::WRL::ComPtr<IDXGIOutput1> m_output;
    QString m_name; ///< of the display
    Microsoft::WRL::ComPtr<ID3D11Device> m_device;
    Microsoft::WRL::ComPtr<ID3D11DeviceContext> m_context;
    Microsoft::WRL::ComPtr<IDXGIOutputDuplication> m_duplication;
    Microsoft::WRL::ComPtr<ID3D11Texture2D> m_staging; ///< the last picture
    bool m_isDrawn = false;                            ///< it is what the screen shows
    qint64 m_drawnMs = 0;                              ///< when it is taken for that at the latest
    qint64 m_grabbedMs = 0;                            ///< when somebody last wanted a picture
    DXGI_MODE_ROTATION m_rotation = DXGI_MODE_ROTATION_IDENTITY;
    HdrToBytes m_toBytes;
    qint64 m_askWhiteMs = 0; ///< when the user may have set it anew
    HRESULT m_trouble = S_OK;
    bool m_hasFailed = false;
    RetryPause m_pause;
    qint64 m_retryMs = 0;
};
