#pragma once

#include "support/capture/FrameScaler.h"
#include "support/capture/ScreenGrabber.h"

#include <QByteArray>
#include <atomic>
#include <memory>

class X11ChangeWatch;
class X11Image;
class X11Reducer;
struct xcb_connection_t;

/// Reads the monitors of an X server over a connection of its own: one source a RandR monitor, or the whole
/// screen where the server has no monitors to tell of.
class X11Grabber : public ScreenGrabber
{
public:
    /// The server to connect to, such as ":0".
    explicit X11Grabber(QByteArray display);
    ~X11Grabber() override;

    bool open() override;
    void close() override;
    bool isOpen() const override;
    CaptureSources sources() override;
    bool takeSourcesChanged() override;
    bool tellsOfChange(const CaptureSource& source) override;
    Result grab(const CaptureSource& source, QSize outputSize, bool force, cv::Mat& frame) override;
    void wait(std::chrono::microseconds time) override;
    void wake() override;
    void abort() override;

private:
    bool readFormat(int screenNumber);
    void openExtensions();
    bool hasSharedMemory();
    CaptureSources monitors();
    void readEvents();
    QString atomName(uint32_t atom);
    void refuse(const QString& reason);

    const QByteArray m_display;
    int m_wakeFile = -1;
    std::atomic<int> m_abortFile{-1};
    xcb_connection_t* m_connection = nullptr;
    std::unique_ptr<X11Image> m_image;
    std::unique_ptr<X11Reducer> m_reducer;
    std::unique_ptr<X11ChangeWatch> m_watch;
    uint32_t m_root = 0;
    QSize m_rootSize;
    SourcePixels m_format; ///< only the places of the colours
    bool m_hasMonitors = false;
    int m_randrEvent = -1; ///< first event code; -1 without the extension
    bool m_sourcesChanged = false;
    bool m_pictureChanged = false; ///< as was told since whoever grabs asked for changes of the sources
    QString m_refused;             ///< said already
};
