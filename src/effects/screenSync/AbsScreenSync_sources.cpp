// What AbsScreenSync looks at: its capturer, stand-ins, and what it says while there is none.
#include "effects/EffectNotice.h"
#include "effects/screenSync/AbsScreenSync.h"
#include "support/capture/IDeskDuplManager.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QDebug>
#include <algorithm>

namespace {

constexpr int kFrameWidthPx = 120;

constexpr const char* kNoPicture = QT_TRANSLATE_NOOP("EffectNotice", "没有可以跟随的屏幕画面。");
constexpr const char* kChosenGone = QT_TRANSLATE_NOOP("EffectNotice", "所选的屏幕没有连接。");
constexpr const char* kAskForScreen = QT_TRANSLATE_NOOP("EffectNotice", "请求屏幕画面");

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

} // namespace

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
    ConfigurationManager::instance()->setAppConfig(ConfigKeys::sourceIndexKey(controllerId()), sourceIdx);
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
    connect(m_capturer.data(), &IDeskCapture::changed, this, &AbsScreenSync::onPictureChanged,
            Qt::QueuedConnection);
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
    m_capturer->sharedFrame(this, nextStepMs(), period());
    showAtOnce();
    return true;
}

void AbsScreenSync::releaseCapturer()
{
    if (!m_capturer)
        return;
    m_capturer->disconnect(this);
    m_capturer.reset();
    m_steps.forget();
    m_deskDuplManager->releaseCapturer(m_sourceIdx);
}

void AbsScreenSync::adaptOutputSize()
{
    beginAnew();
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

const char* AbsScreenSync::lackOfSource() const
{
    if (!m_deskDuplManager)
        return kNoPicture;
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
    m_smoother.snap();
    show(QVector<LV_RGB>(m_colors.size(), LV_RGB{}));
    emit effectPropertyChanged(EffectNotice::kKey, notice());
}

QString AbsScreenSync::notice() const
{
    return m_dark ? QString::fromUtf8(m_trouble) : QString();
}

void AbsScreenSync::onCtlDarkChanged(bool dark)
{
    WithProperties::onCtlDarkChanged(dark);
    m_smoother.snap();
    // The last frame is from before the pause: the first step afterwards must not begin with it.
    if (!dark && m_capturer)
        m_capturer->sharedFrame(this, nextStepMs(), period());
    if (m_deskDuplManager && (dark || needsCapturer()))
        m_deskDuplManager->requestSources(dark ? SourceRequest::Pausing : SourceRequest::Again);
}
