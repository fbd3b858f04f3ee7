#pragma once

#include "support/SharedLibrary.h"

// Desktop capture, from the effects down to the screen:
//
//   IDeskDuplManager, IDeskCapture   what the effects see: a list of sources, and frames of one of them
//   DeskDuplManager                  shares one DeskCapture a source; DeskCaptureOption, the user's choice,
//                                    picks the grabber from the list in CaptureModes_*
//   DeskCapture                      between pullers and grabbing: keeps the newest frame; its GrabPlan says
//                                    when the next is due, just before the pull that it expects
//   CaptureThread                    grabs what is due and follows the sources; drives a ScreenGrabber
//   ScreenGrabber                    where another way to read the desktop slots in, one system's calls:
//                                    X11Grabber (with X11Image for the memory and X11ChangeWatch to skip
//                                    still screens), DxgiGrabber (with DxgiMonitor), PipeWireGrabber (a
//                                    PipeWireConnection with a PipeWireStream a monitor; what it connects
//                                    to comes through the ScreenCastFeed from the ScreenCastSession)
//   FrameScaler                      the screen's pixels to the small frame, by the mean of areas

#include "support/capture/CaptureModes.h"
#include "support/capture/CaptureSource.h"
#include "support/capture/IDeskDuplManager.h"

#include <QHash>
#include <memory>
#include <mutex>

class CaptureThread;
class DeskCapture;

/// The desktop's picture sources, read by the grabber that DeskCaptureOption selects. Lives on the main
/// thread, where it emits; the operations may be called from any thread. While a source is gone its
/// capture gives no frames; it gives frames again when the source comes back.
class LUMIVAR_SUPPORT_EXPORT DeskDuplManager : public IDeskDuplManager
{
    Q_OBJECT

public:
    explicit DeskDuplManager(QObject* parent = nullptr);
    /// With other modes than the system's.
    explicit DeskDuplManager(const QList<CaptureMode>& modes, QObject* parent = nullptr);
    ~DeskDuplManager() override;

    /// The primary source first.
    QList<QString> allCapturer() override;
    /// Empty without any source.
    QString defaultCapturer() override;
    QSharedPointer<IDeskCapture> acquireCapturer(QString id) override;
    void releaseCapturer(QString id) override;
    QString capturerDesc(QString id) override;
    void requestSources(SourceRequest request) override;
    SourceTrouble sourceTrouble() override;
    bool isOfPresentMode(const QString& id) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void onSourcesChanged();
    void onCurModeChanged(int mode);

private:
    struct Shared
    {
        QSharedPointer<DeskCapture> capture;
        int users = 0;
    };

    void startThread(int mode);
    CaptureSources currentSources() const;
    SourceTrouble currentTrouble() const;

    const QList<CaptureMode> m_modes;
    std::unique_ptr<CaptureThread> m_thread; ///< null where there is nothing to read
    std::mutex m_mutex;                      // guards what follows, and m_thread outside the main thread
    QString m_idPrefix;                      ///< of the present mode
    CaptureSources m_sources;
    SourceTrouble m_trouble = SourceTrouble::None;
    QHash<QString, Shared> m_shared;
};
