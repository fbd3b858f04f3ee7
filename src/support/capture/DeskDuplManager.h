#pragma once

#include "support/capture/CaptureModes.h"
#include "support/capture/CaptureSource.h"
#include "support/capture/IDeskDuplManager.h"

#include <QHash>
#include <memory>
#include <mutex>

class CaptureBackend;
class DeskCapture;
class DeskCaptureOption;

/// The desktop's picture sources, read by the back end that DeskCaptureOption selects. Lives on the main
/// thread, where it emits; the operations may be called from any thread. While a source is gone its
/// capture gives no frames; it gives frames again when the source comes back.
class DeskDuplManager : public IDeskDuplManager
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

    DeskCaptureOption* option() const { return m_option; }

private slots:
    void onSourcesChanged();
    void onCurModeChanged(int mode);

private:
    struct Shared
    {
        QSharedPointer<DeskCapture> capture;
        int users = 0;
    };

    void createBackend(int mode);
    int indexOf(const QString& id) const;

    const QList<CaptureMode> m_modes;
    DeskCaptureOption* m_option = nullptr;
    std::unique_ptr<CaptureBackend> m_backend;
    std::mutex m_mutex; // guards what follows, and m_backend outside the main thread
    CaptureSources m_sources;
    QHash<QString, Shared> m_shared;
};
