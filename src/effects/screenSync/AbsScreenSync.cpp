#include "effects/screenSync/AbsScreenSync.h"

#include "effects/EffectNotice.h"
#include "effects/screenSync/FrameFilters.h"
#include "effects/screenSync/ScreenshotTask.h"
#include "support/capture/IDeskDuplManager.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QImage>
#include <QJsonValue>
#include <QThreadPool>
#include <algorithm>
#include <opencv2/core.hpp>

namespace {

constexpr int kFrameWidthPx = 120;
constexpr qint64 kScreenshotIntervalMs = 5000;
constexpr int kFramesPerLogLine = 90;
/// A change of the source is over sooner, so that it does not make the strip blink.
constexpr int kDarkAfterMs = 300;

constexpr const char* kNoPicture = QT_TRANSLATE_NOOP("EffectNotice", "没有可以跟随的屏幕画面。");
constexpr const char* kChosenGone = QT_TRANSLATE_NOOP("EffectNotice", "所选的屏幕没有连接。");
constexpr const char* kAskForScreen = QT_TRANSLATE_NOOP("EffectNotice", "请求屏幕画面");
constexpr const char* kUnusable = QT_TRANSLATE_NOOP("EffectNotice", "屏幕画面或布局的大小不适合此效果。");

const char* textOf(SourceTrouble trouble)
{
    switch (trouble) {
    case SourceTrouble::None:
        break;
    case SourceTrouble::NoDisplay:
        return QT_TRANSLATE_NOOP("EffectNotice",
                                 "没有可以读取的屏幕。请在图形桌面中启动程序，或在设置中更换场景捕获模式。");
    case SourceTrouble::NotAsked:
        return QT_TRANSLATE_NOOP("EffectNotice", "跟随屏幕需要您的同意，桌面会询问您。");
    case SourceTrouble::Asking:
        return QT_TRANSLATE_NOOP("EffectNotice", "请在桌面的对话框中选择要跟随的屏幕。");
    case SourceTrouble::Refused:
        return QT_TRANSLATE_NOOP("EffectNotice", "您没有同意共享屏幕，灯带无法跟随。");
    case SourceTrouble::Withdrawn:
        return QT_TRANSLATE_NOOP("EffectNotice", "屏幕共享已结束，灯带不再跟随。");
    case SourceTrouble::NoPortal:
        return QT_TRANSLATE_NOOP("EffectNotice", "此桌面不提供屏幕画面。请安装 xdg-desktop-portal "
                                                 "及适合此桌面的后端，或在设置中更换场景捕获模式。");
    case SourceTrouble::Lost:
        return QT_TRANSLATE_NOOP("EffectNotice", "屏幕画面已中断，恢复后会自动继续。");
    }
    return kNoPicture;
}

ConfigurationManager* config()
{
    return ConfigurationManager::instance();
}

double storedStrength(const QString& effectId, const QString& controllerId,
                      const ConfigKeys::Setting<double>& setting)
{
    bool ok = false;
    const double value = config()->effectVariant(effectId, controllerId, setting.key).toDouble(&ok);
    return ok ? value : setting.fallback;
}

bool appFlag(const QString& key, bool fallback)
{
    return config()->appConfig(key).toBool(fallback);
}

} // namespace

AbsScreenSync::AbsScreenSync(const EffectWorkerOptions& options, QObject* parent)
    : WithProperties(options, parent, false)
    , m_screenshotEnabled(QCoreApplication::instance()->property("isScreenshot").toBool() ||
                          appFlag(ConfigKeys::kScreenshotEnable.key, ConfigKeys::kScreenshotEnable.fallback))
{
    listProperties();
    if (m_screenshotEnabled) {
        if (!QDir().mkpath(ScreenshotTask::folder()))
            qWarning().noquote() << "[AbsScreenSync]: Cannot create" << ScreenshotTask::folder();
        m_screenshotTimer.start();
    }
    m_frameTimer.start();
    m_darkTimer.setSingleShot(true);
    m_darkTimer.setInterval(kDarkAfterMs);
    connect(&m_darkTimer, &QTimer::timeout, this, &AbsScreenSync::goDark);
    onAppConfigChanged(ConfigKeys::kScreenSyncAdvancedMode.key);
}

AbsScreenSync::~AbsScreenSync()
{
    qDebug().noquote() << "[AbsScreenSync]:" << effectId() << "used to" << controllerId()
                       << "has been destructed";
}

int AbsScreenSync::load(const ControlOptions& ctlOptions)
{
    m_colors.resize(static_cast<int>(ctlOptions.nbLeds));
    m_direction = ctlOptions.installDirection;
    m_ctlOptions = ctlOptions;

    m_blurStrength = storedStrength(effectId(), controllerId(), ConfigKeys::kBlurStrength);
    m_saturationStrength = storedStrength(effectId(), controllerId(), ConfigKeys::kSaturationStrength);

    const auto& permission = ConfigKeys::kScreenSyncAutoWipeDarkSide;
    const QJsonValue allowed = config()->appConfig(permission.key);
    if (allowed.isUndefined() || allowed.isNull())
        config()->setAppConfig(permission.key, permission.fallback);
    m_autoWipeDarkSide =
        appFlag(ConfigKeys::autoWipeDarkSideKey(controllerId()), ConfigKeys::kAutoWipeDarkSideOf.fallback) &&
        wipeDarkSideAllowed();

    if (!m_deskDuplManager) {
        qCritical() << "[AbsScreenSync]: DeskDuplManager is not injected";
        setTrouble(kNoPicture);
        return 0;
    }
    start();

    const QList<QString> capturers = m_deskDuplManager->allCapturer();
    m_wantedIdx = config()->appConfig(ConfigKeys::sourceIndexKey(controllerId())).toString();
    if (capturers.isEmpty()) {
        qWarning() << "[AbsScreenSync]: Cannot connect to any capture";
        setTrouble(lackOfSource());
        m_deskDuplManager->requestSources(SourceRequest::Needed);
        return 0;
    }
    // What another way to read the desktop calls its screens cannot come: then any will do.
    const bool mayCome = !m_wantedIdx.isEmpty() && m_deskDuplManager->isOfPresentMode(m_wantedIdx);
    if (!bindCapturer(mayCome ? m_wantedIdx : capturers.first()))
        setTrouble(lackOfSource());
    return 0;
}

void AbsScreenSync::unload()
{
    config()->setEffectVariant(effectId(), controllerId(), ConfigKeys::kBlurStrength.key, m_blurStrength);
    config()->setEffectVariant(effectId(), controllerId(), ConfigKeys::kSaturationStrength.key,
                               m_saturationStrength);
    config()->saveEffectJsonObj(effectId());
    // The screen and the dark-side switch were stored when they were chosen. What is in use may be less: a
    // stand-in, or no removal for want of permission.
    // A capturer that turns up before the worker is deleted must not be acquired: nobody would release it.
    if (m_deskDuplManager)
        m_deskDuplManager->disconnect(this);
    m_darkTimer.stop();
    releaseCapturer();
}

void AbsScreenSync::DIDeskDuplication(IDeskDuplManager* mgr)
{
    if (m_deskDuplManager) {
        qWarning() << "[AbsScreenSync]: The DeskDuplManager has been set";
        return;
    }
    if (!mgr) {
        qCritical() << "[AbsScreenSync]: mgr == nullptr in DIDeskDuplication";
        return;
    }
    m_deskDuplManager = mgr;
    connect(mgr, &IDeskDuplManager::capturerReady, this, &AbsScreenSync::onCapturerReady);
    connect(mgr, &IDeskDuplManager::capturerFailed, this, &AbsScreenSync::onCapturerFailed);
    connect(mgr, &IDeskDuplManager::capturersChanged, this, &AbsScreenSync::onCapturersChanged);
    connect(mgr, &IDeskDuplManager::modeChanged, this, &AbsScreenSync::onModeChanged);
}

void AbsScreenSync::setInputSourceIdx(QString sourceIdx)
{
    if (!bindCapturer(sourceIdx))
        return;
    m_wantedIdx = sourceIdx;
    config()->setAppConfig(ConfigKeys::sourceIndexKey(controllerId()), sourceIdx);
}

bool AbsScreenSync::bindCapturer(const QString& sourceIdx)
{
    if (!m_deskDuplManager) {
        qCritical() << "[AbsScreenSync]: DeskDupManager is nullptr";
        return false;
    }
    if (sourceIdx.isEmpty()) {
        qCritical().noquote() << "[AbsScreenSync]: Invalied sourceIdx:" << sourceIdx;
        return false;
    }
    // Acquired before the old one is released, so that a change to the same capturer does not stop it.
    const QSharedPointer<IDeskCapture> acquired = m_deskDuplManager->acquireCapturer(sourceIdx);
    if (!acquired) {
        qCritical().noquote() << "[AbsScreenSync]: Failed to acquire capture :" << sourceIdx;
        return false;
    }
    if (m_capturer) {
        qInfo().noquote() << "[AbsScreenSync]: The" << effectId() << "is disconnected from the" << m_sourceIdx
                          << "capturer.";
        releaseCapturer();
    }
    m_capturer = acquired;
    m_sourceIdx = sourceIdx;
    // Who never chose wants back what he began with.
    if (m_wantedIdx.isEmpty())
        m_wantedIdx = sourceIdx;
    m_capturerLost = false;
    if (!m_dark)
        setTrouble(nullptr);
    adaptOutputSize();
    qInfo().noquote() << "[AbsScreenSync]: The" << effectId() << "is connected from the" << sourceIdx
                      << "capturer"
                      << "\r\n outputSize:" << m_capturer->outputSize();
    // Grabbing begins with the first pull: without this one the next tick would find nothing yet.
    m_capturer->grabFrame();
    return true;
}

void AbsScreenSync::releaseCapturer()
{
    if (!m_capturer)
        return;
    m_capturer.reset();
    m_deskDuplManager->releaseCapturer(m_sourceIdx);
}

void AbsScreenSync::adaptOutputSize()
{
    m_sourceSize = m_capturer->sourceSize();
    if (m_sourceSize.isEmpty()) {
        qWarning().noquote() << "[AbsScreenSync]: Capturer" << m_sourceIdx
                             << "has no size yet:" << m_sourceSize;
        return;
    }
    const double aspect = static_cast<double>(m_sourceSize.width()) / m_sourceSize.height();
    const int height = std::max(1, static_cast<int>(kFrameWidthPx / aspect));
    if (m_capturer->outputSize() != QSize(kFrameWidthPx, height))
        m_capturer->setOutputSize(kFrameWidthPx, height);
}

void AbsScreenSync::onCapturerReady(const QString& id)
{
    qInfo().noquote() << "[AbsScreenSync]: Capturer" << id << "is available.";
    // When the display comes back several are announced, one by one: the wanted one goes first.
    const bool wantedIsThere = id == m_wantedIdx || m_deskDuplManager->allCapturer().contains(m_wantedIdx);
    if (wantedIsThere && (needsCapturer() || m_sourceIdx != m_wantedIdx))
        bindCapturer(m_wantedIdx);
    if (needsCapturer())
        bindCapturer(id);
    announceSources();
}

void AbsScreenSync::onCapturerFailed(const QString& id)
{
    qInfo().noquote() << "[AbsScreenSync]: Capturer" << id << "is lost.";
    if (id == m_sourceIdx) {
        m_capturerLost = true;
        if (!bindCapturer(m_deskDuplManager->defaultCapturer()))
            setTrouble(lackOfSource());
    }
    announceSources();
}

void AbsScreenSync::onCapturersChanged()
{
    if (needsCapturer())
        setTrouble(lackOfSource()); // for another reason now
    announceSources();
}

void AbsScreenSync::onModeChanged()
{
    if (needsCapturer())
        m_deskDuplManager->requestSources(SourceRequest::Shown); // by the user, who is there
}

bool AbsScreenSync::needsCapturer() const
{
    return !m_capturer || m_capturerLost;
}

void AbsScreenSync::update(double)
{
    if (!m_capturer)
        return;
    // The screen may be turned or get another resolution, or its size be known only later.
    const bool resized = m_capturer->sourceSize() != m_sourceSize;
    if (resized)
        adaptOutputSize();
    const cv::Mat frame = m_capturer->grabFrame();
    if (!frame.empty())
        frameInput(frame);
    else if (!resized) // a frame of the new size comes for the next tick, which may be long after
                       // kDarkAfterMs
        setTrouble(lackOfSource());
}

const char* AbsScreenSync::lackOfSource() const
{
    if (m_deskDuplManager->allCapturer().isEmpty())
        return textOf(m_deskDuplManager->sourceTrouble());
    return m_capturer ? kNoPicture : kChosenGone; // gone while others are there
}

QString AbsScreenSync::noticeAction() const
{
    if (!m_deskDuplManager || !needsCapturer())
        return {};
    const SourceTrouble trouble = m_deskDuplManager->sourceTrouble();
    const bool canBeAsked = trouble == SourceTrouble::NotAsked || trouble == SourceTrouble::Refused ||
                            trouble == SourceTrouble::Withdrawn;
    return canBeAsked ? QString::fromUtf8(kAskForScreen) : QString();
}

void AbsScreenSync::askForSources(bool isWanted)
{
    if (!noticeAction().isEmpty())
        m_deskDuplManager->requestSources(isWanted ? SourceRequest::Wanted : SourceRequest::Shown);
}

void AbsScreenSync::setTrouble(const char* trouble)
{
    if (trouble == m_trouble)
        return;
    m_trouble = trouble;
    if (m_dark) {
        m_dark = trouble != nullptr;
        emit effectPropertyChanged(EffectNotice::kKey, notice());
    } else if (!trouble) {
        m_darkTimer.stop();
    } else if (!m_darkTimer.isActive()) {
        m_darkTimer.start();
    }
}

void AbsScreenSync::goDark()
{
    m_dark = true;
    emit updateColors(QVector<LV_RGB>(m_colors.size(), LV_RGB{}));
    emit effectPropertyChanged(EffectNotice::kKey, notice());
}

QString AbsScreenSync::notice() const
{
    return m_dark ? QString::fromUtf8(m_trouble) : QString();
}

void AbsScreenSync::frameInput(cv::Mat frame)
{
    if (frame.empty())
        return;
    QVector<LV_RGB> result;
    try {
        result = conditionedColors(frame);
    } catch (const cv::Exception& e) {
        reportOnce(QStringLiteral("%1:%2").arg(QString::fromStdString(e.func)).arg(e.line),
                   QStringLiteral("[AbsScreenSync]: The frame is skipped: ") + QLatin1String(e.what()));
        setTrouble(kUnusable);
        return;
    } catch (const std::exception& e) {
        reportOnce(QLatin1String(e.what()),
                   QStringLiteral("[AbsScreenSync]: The frame is skipped: ") + QLatin1String(e.what()));
        setTrouble(kUnusable);
        return;
    }
    setTrouble(nullptr);
    emit updateColors(result);
    countFrame();
}

QVector<LV_RGB> AbsScreenSync::conditionedColors(const cv::Mat& frame)
{
    // The modes read pixels of four bytes.
    CV_Assert(frame.type() == CV_8UC4);
    const cv::Mat work = m_autoWipeDarkSide ? wipeDarkSide(frame) : frame;
    // No UMat: a frame this small gains nothing from an accelerator, and the first one would load its
    // runtime.
    cv::Mat out = blurFrame(work, m_blurStrength);
    takeScreenshot(out);
    if (m_direction == 1)
        cv::flip(out, out, 1);
    QVector<LV_RGB> result = frameToColors(out);
    for (LV_RGB& color : result)
        color = adjustSaturation(color, m_saturationStrength);
    return result;
}

void AbsScreenSync::takeScreenshot(const cv::Mat& frame)
{
    if (!m_screenshotEnabled || m_screenshotTimer.elapsed() <= kScreenshotIntervalMs)
        return;
    const QImage view(frame.data, frame.cols, frame.rows, static_cast<int>(frame.step),
                      QImage::Format_RGBA8888);
    QThreadPool::globalInstance()->start(new ScreenshotTask(view.copy(), effectId()), 0);
    m_screenshotTimer.restart();
}

void AbsScreenSync::countFrame()
{
    m_frameTimeSum += m_frameTimer.restart();
    if (++m_frameCount <= kFramesPerLogLine)
        return;
    const double average = static_cast<double>(m_frameTimeSum) / m_frameCount;
    if (m_frameBrake.isDue(average))
        qDebug().noquote() << "[[loop]][AbsScreenSync]:" << controllerId() << "avg frame time:" << average
                           << "ms";
    m_frameTimeSum = 0;
    m_frameCount = 0;
}

void AbsScreenSync::reportOnce(const QString& kind, const QString& text)
{
    if (m_reported.contains(kind))
        return;
    m_reported.insert(kind);
    qWarning().noquote() << text;
}

LV_RGB AbsScreenSync::adjustSaturation(LV_RGB color, double strength)
{
    return FrameFilters::adjustSaturation(color, strength);
}

cv::Mat AbsScreenSync::blurFrame(cv::Mat src, double)
{
    return FrameFilters::blur(src, m_blurStrength);
}

cv::UMat AbsScreenSync::blurFrame(cv::UMat src, double)
{
    return FrameFilters::blur(src, m_blurStrength);
}

cv::Mat AbsScreenSync::wipeDarkSide(cv::Mat frame)
{
    cv::Mat result = frame;
    try {
        FrameFilters::wipeDarkSide(frame, result);
    } catch (...) {
        reportOnce(QStringLiteral("wipeDarkSide"),
                   QStringLiteral("*** QImageOpencvProess::wipeDarkSide Exception"));
    }
    return result;
}

void AbsScreenSync::onCtlDarkChanged(bool dark)
{
    WithProperties::onCtlDarkChanged(dark);
    if (m_deskDuplManager && (dark || needsCapturer()))
        m_deskDuplManager->requestSources(dark ? SourceRequest::Pausing : SourceRequest::Again);
}

void AbsScreenSync::onCtlDirChanged(uint32_t dir)
{
    m_direction = dir;
}

void AbsScreenSync::setBlurStrength(float strength)
{
    m_blurStrength = static_cast<double>(strength);
    config()->setEffectVariant(effectId(), controllerId(), ConfigKeys::kBlurStrength.key, m_blurStrength);
    config()->saveEffectJsonObj(effectId());
}

void AbsScreenSync::setSaturationStrength(float strength)
{
    m_saturationStrength = static_cast<double>(strength);
    config()->setEffectVariant(effectId(), controllerId(), ConfigKeys::kSaturationStrength.key,
                               m_saturationStrength);
    config()->saveEffectJsonObj(effectId());
}

void AbsScreenSync::onAppConfigChanged(QString key)
{
    const auto& setting = ConfigKeys::kScreenSyncAdvancedMode;
    if (key == QLatin1String(setting.key))
        m_advancedMode = appFlag(setting.key, setting.fallback);
}
