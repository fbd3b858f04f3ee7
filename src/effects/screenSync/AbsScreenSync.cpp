#include "effects/screenSync/AbsScreenSync.h"

#include "effects/EffectNotice.h"
#include "effects/screenSync/FrameFilters.h"
#include "effects/screenSync/ScreenshotTask.h"
#include "support/capture/IDeskDuplManager.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/plugins/GuardedCall.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QImage>
#include <QJsonValue>
#include <QThreadPool>
#include <algorithm>
#include <opencv2/core.hpp>
#include <utility>

namespace {

constexpr qint64 kScreenshotIntervalMs = 5000;
constexpr int kFramesPerLogLine = 90;
/// A change of the source is over sooner, so that it does not make the strip blink.
constexpr int kDarkAfterMs = 300;
constexpr int kStepsToMakeUp = 10;
constexpr int kSmallBacklogUs = 6000;

constexpr const char* kUnusable = QT_TRANSLATE_NOOP("EffectNotice", "屏幕画面或布局的大小不适合此效果。");

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
    m_clock.start();
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
    loadLook();
    applyFrameInterval();

    const auto& permission = ConfigKeys::kScreenSyncAutoWipeDarkSide;
    const QJsonValue allowed = config()->appConfig(permission.key);
    if (allowed.isUndefined() || allowed.isNull())
        config()->setAppConfig(permission.key, permission.fallback);
    m_autoWipeDarkSide =
        appFlag(ConfigKeys::autoWipeDarkSideKey(controllerId()), ConfigKeys::kAutoWipeDarkSideOf.fallback) &&
        wipeDarkSideAllowed();

    if (!m_deskDuplManager) {
        qCritical() << "[AbsScreenSync]: DeskDuplManager is not injected";
        setTrouble(lackOfSource());
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

void AbsScreenSync::update(double)
{
    if (!m_capturer)
        return;
    // The screen may be turned or get another resolution, or its size be known only later.
    const bool resized = m_capturer->sourceSize() != m_sourceSize;
    if (resized)
        adaptOutputSize();
    const quint64 number = m_capturer->frameCount(); // first: of a newer frame the next step hears
    const cv::Mat frame = m_capturer->sharedFrame(this, nextStepMs(), period());
    if (frame.empty()) {
        m_stillness.disturb();
        if (isResting())
            endRest();
        if (!resized) // a frame of the new size comes for the next tick, which may be long after
                      // kDarkAfterMs
            setTrouble(lackOfSource());
        return;
    }
    if (m_stillness.hasWork(number, isSettled()) || !restsOnStillScreens()) {
        m_steps.begin(frame);
        frameInput(frame);
    }
    restOrGoOn(number);
}

bool AbsScreenSync::isSettled() const
{
    return m_smoother.isSettled() && (!m_autoWipeDarkSide || !m_stableBorder || m_border.isSettled());
}

void AbsScreenSync::restOrGoOn(quint64 frameNumber)
{
    const bool mayRest = restsOnStillScreens() && m_stillness.mayRest() &&
                         m_capturer->awaitChange(this, frameNumber, updateInterval());
    if (mayRest && !isResting())
        rest(Stillness::kLookMs);
    else if (!mayRest && isResting())
        endRest();
}

void AbsScreenSync::showAtOnce()
{
    QMetaObject::invokeMethod(this, [this] {
        m_stillness.disturb();
        if (isResting())
            stepNow();
    });
}

void AbsScreenSync::setEffectProperty(const QString& key, const QJsonValue& val)
{
    WithProperties::setEffectProperty(key, val);
    showAtOnce();
}

void AbsScreenSync::onPictureChanged()
{
    if (m_capturer && isResting())
        stepNow();
}

void AbsScreenSync::onCtlLineBusy(int ms)
{
    // What a late step has left on the line the next ones make up for by themselves, and in step.
    const int backlogUs = 1000 * ms - m_ctlOptions.frameSlotUs;
    const int slackUs = 1000 * updateInterval() - m_ctlOptions.frameSlotUs;
    const bool passes = backlogUs <= std::min(kStepsToMakeUp * slackUs, kSmallBacklogUs);
    if (m_frameInterval != 0 && !isResting() && !passes)
        delayStep(ms);
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
    show(result);
    countFrame();
}

void AbsScreenSync::show(const QVector<LV_RGB>& colors)
{
    // The controller repeats by itself what does not change.
    if (!restsOnStillScreens() || colors != m_shown)
        emit updateColors(colors);
    m_shown = colors;
}

QVector<LV_RGB> AbsScreenSync::conditionedColors(const cv::Mat& frame)
{
    // The modes read pixels of four bytes.
    CV_Assert(frame.type() == CV_8UC4);
    const qint64 now = nowUs();
    const double seconds = static_cast<double>(now - std::exchange(m_lastStepUs, now)) / 1e6;
    const cv::Mat work = m_autoWipeDarkSide ? withoutBorder(frame, seconds) : frame;
    // No UMat: a frame this small gains nothing from an accelerator, and the first one would load its
    // runtime.
    m_places = isScreenshotDue() ? std::vector<cv::Rect>() : lookedAt(work.size());
    if (m_direction == 1) {
        for (cv::Rect& place : m_places)
            place.x = work.cols - place.x - place.width;
    }
    cv::Mat out = blurFrame(work, m_blurStrength);
    takeScreenshot(out);
    if (m_direction == 1)
        out = m_steps.make(out, FrameStep::mirror());
    QVector<LV_RGB> result = frameToColors(out);
    finishColors(result, seconds);
    return result;
}

cv::Mat AbsScreenSync::withoutBorder(const cv::Mat& frame, double seconds)
{
    if (!m_stableBorder)
        return wipeDarkSide(frame);
    const cv::Rect picture = m_border.step(frame, seconds);
    if (picture.size() == frame.size())
        return frame;
    return zoomed(frame, picture, frame.size());
}

cv::Mat AbsScreenSync::zoomed(const cv::Mat& frame, const cv::Rect& part, const cv::Size& size)
{
    return m_steps.make(frame, FrameStep::zoom(part, size));
}

void AbsScreenSync::finishColors(QVector<LV_RGB>& colors, double seconds)
{
    m_smoother.step(colors, seconds);
    // Taking saturation away makes no jumps.
    const int gate = m_saturationStrength > 0.0 ? m_saturationGate : 0;
    for (LV_RGB& color : colors)
        color = adjustSaturation(color, m_saturationStrength * FrameFilters::saturationShare(color, gate));
}

void AbsScreenSync::beginAnew()
{
    m_smoother.snap();
    m_border.forget();
}

qint64 AbsScreenSync::nowUs() const
{
    return m_clock.nsecsElapsed() / 1000;
}

bool AbsScreenSync::isScreenshotDue() const
{
    return m_screenshotEnabled && m_screenshotTimer.elapsed() > kScreenshotIntervalMs;
}

void AbsScreenSync::takeScreenshot(const cv::Mat& frame)
{
    if (!isScreenshotDue() || !m_places.empty()) // of which the time came only now
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
    return m_steps.blur(src, m_blurStrength, m_places);
}

cv::UMat AbsScreenSync::blurFrame(cv::UMat src, double)
{
    return FrameFilters::blur(src, m_blurStrength);
}

std::vector<cv::Rect> AbsScreenSync::lookedAt(const cv::Size&)
{
    return {};
}

cv::Mat AbsScreenSync::wipeDarkSide(cv::Mat frame)
{
    try {
        return m_steps.make(frame, FrameStep::brightPart());
    } catch (...) {
        reportOnce(QStringLiteral("wipeDarkSide"),
                   QStringLiteral("*** QImageOpencvProess::wipeDarkSide Exception"));
    }
    cv::Mat result = frame; // as far as it comes
    guardedCall("wipeDarkSide", [&] { FrameFilters::wipeDarkSide(frame, result); });
    return result;
}

void AbsScreenSync::onCtlDirChanged(uint32_t dir)
{
    m_direction = dir;
    m_smoother.snap();
    showAtOnce();
}

void AbsScreenSync::setBlurStrength(float strength)
{
    m_blurStrength = static_cast<double>(strength);
    config()->setEffectVariant(effectId(), controllerId(), ConfigKeys::kBlurStrength.key, m_blurStrength);
    config()->saveEffectJsonObj(effectId());
    showAtOnce();
}

void AbsScreenSync::setSaturationStrength(float strength)
{
    m_saturationStrength = static_cast<double>(strength);
    config()->setEffectVariant(effectId(), controllerId(), ConfigKeys::kSaturationStrength.key,
                               m_saturationStrength);
    config()->saveEffectJsonObj(effectId());
    showAtOnce();
}

void AbsScreenSync::onAppConfigChanged(QString key)
{
    const auto& setting = ConfigKeys::kScreenSyncAdvancedMode;
    if (key == QLatin1String(setting.key))
        m_advancedMode = appFlag(setting.key, setting.fallback);
}
