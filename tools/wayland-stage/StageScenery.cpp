#include "StageScenery.h"

#include <QPainter>

#include <algorithm>

namespace {
constexpr int kPaintMs = 40;
constexpr QSize kPainted{160, 90};
constexpr double kSecondsApart = 40; // so that screens differ
} // namespace

StageScenery::StageScenery(int screens, Answer answer, const QString& token)
    : m_stage(screens)
    , m_screens(screens)
    , m_answer(answer)
{
    ScreenPortal& portal = m_stage.portal();
    portal.isUserSlow = true;
    portal.goodToken = token;
    connect(&portal, &ScreenPortal::asked, this, &StageScenery::onAsked);
    connect(&portal, &ScreenPortal::answered, this, &StageScenery::onAnswered);
    connect(&portal, &ScreenPortal::restored, this,
            [this] { emit happened("shares the screens again, by the consent it keeps"); });
    connect(&portal, &ScreenPortal::closed, this,
            [this] { emit happened("hears that the program needs the screens no more"); });
    connect(&m_pace, &QTimer::timeout, this, &StageScenery::paint);
}

bool StageScenery::start()
{
    if (!m_stage.start())
        return false;
    connect(&m_stage.logins(), &LoginManager::released, this, [this] {
        if (m_stage.logins().isPreparing)
            emit happened("may sleep: nobody needs more time");
    });
    m_clock.start();
    m_pace.start(kPaintMs);
    paint();
    return true;
}

void StageScenery::setFault(const QString& method, ScreenPortal::Fault fault)
{
    m_stage.portal().faults[method] = fault;
}

void StageScenery::addTo(QProcessEnvironment& environment) const
{
    m_stage.addTo(environment);
}

const QVector<StageScenery::Deed>& StageScenery::deeds()
{
    static const QVector<Deed> all{
        {"yes", 'y', "", &StageScenery::consent},
        {"no", 'n', "", &StageScenery::refuse},
        {"end", 'e', "end the sharing", &StageScenery::endSharing},
        {"forget", 'f', "forget the consent", &StageScenery::forgetConsent},
        {"server", 'm', "media server", &StageScenery::killOrBringServer},
        {"portal", 'p', "portal", &StageScenery::killOrBringPortal},
        {"sleep", 's', "sleep", &StageScenery::sleepOrWake},
        {"lock", 'l', "lock", &StageScenery::lockOrUnlock},
    };
    return all;
}

bool StageScenery::execute(const QString& command)
{
    const auto deed = std::find_if(deeds().begin(), deeds().end(),
                                   [&](const Deed& each) { return command == each.command; });
    if (deed == deeds().end())
        return false;
    (this->*deed->act)();
    return true;
}

QString StageScenery::commandOf(char key) const
{
    const auto deed =
        std::find_if(deeds().begin(), deeds().end(), [key](const Deed& each) { return key == each.key; });
    return deed == deeds().end() ? QString() : QString(deed->command);
}

QString StageScenery::keys() const
{
    QStringList all;
    for (const Deed& deed : deeds()) {
        if (*deed.name)
            all += QString("%1 %2").arg(QChar(deed.key)).arg(deed.name);
    }
    return all.join("    ");
}

QStringList StageScenery::facts() const
{
    const ScreenPortal& portal = m_stage.portal();
    if (!portal.isThere())
        return {"there is no portal", "p brings it back"};
    if (portal.isDialogOpen())
        return {"Lumivar wants to see your screens", "y share    n refuse"};
    QStringList all{portal.openSessions == 0 ? "no screen is shared"
                    : m_isRead               ? "the screens are shared"
                                             : "the screens are shared, nobody reads them"};
    if (m_stage.logins().isPreparing || m_stage.logins().isLocked)
        all += m_stage.logins().isPreparing ? "asleep: s wakes it" : "locked: l unlocks it";
    if (!m_stage.hasServer())
        all += {"there is no media server", "m brings it back"};
    return all;
}

void StageScenery::answer(uint how)
{
    if (m_stage.portal().isDialogOpen())
        m_stage.portal().answerDialog(how);
    else
        emit happened("asks nothing");
}

void StageScenery::endSharing()
{
    if (m_stage.portal().openSessions == 0) {
        emit happened("shares nothing");
        return;
    }
    emit happened("ends the sharing, as the user wants");
    m_stage.endSharing();
}

void StageScenery::killOrBringServer()
{
    if (m_stage.hasServer()) {
        m_stage.killServer();
        emit happened("has lost its media server");
    } else if (m_stage.startServer()) {
        emit happened("has its media server back");
    }
}

void StageScenery::killOrBringPortal()
{
    ScreenPortal& portal = m_stage.portal();
    if (portal.isThere()) {
        portal.leave();
        emit happened("has lost its portal");
    } else if (portal.come()) {
        emit happened("has its portal back");
    }
}

void StageScenery::forgetConsent()
{
    m_stage.portal().goodToken.clear();
    emit happened("has forgotten the user's consent");
}

void StageScenery::sleepOrWake()
{
    const bool sleeps = !m_stage.logins().isPreparing;
    emit happened(sleeps ? "is going to sleep" : "is awake again");
    m_stage.logins().prepareFor("Sleep", sleeps);
}

void StageScenery::lockOrUnlock()
{
    const bool locks = !m_stage.logins().isLocked;
    emit happened(locks ? "is locked" : "is unlocked");
    m_stage.logins().setLocked(locks);
}

void StageScenery::onAsked()
{
    emit happened(m_answer == Answer::Ask ? "asks whether to share the screens: yes or no?"
                                          : "asks whether to share the screens");
    if (m_answer != Answer::Ask)
        QTimer::singleShot(0, this, m_answer == Answer::Yes ? &StageScenery::consent : &StageScenery::refuse);
}

void StageScenery::onAnswered(uint how)
{
    emit happened(how == 0 ? "shares the screens, as the user wants" : "shares nothing, as the user wants");
}

void StageScenery::paint()
{
    for (int i = 0; i < m_screens; ++i) {
        QImage picture(kPainted, QImage::Format_RGB32);
        QPainter painter(&picture);
        m_lights.paint(painter, picture.rect(),
                       static_cast<double>(m_clock.elapsed()) / 1000 + i * kSecondsApart);
        painter.end();
        if (m_stage.hasServer())
            m_stage.show(i, picture);
        if (i == 0)
            m_picture = picture;
    }
    const bool isRead = m_stage.hasServer() && m_stage.isRead(0);
    if (isRead != std::exchange(m_isRead, isRead))
        emit happened(isRead ? "sees its first screen read" : "sees its first screen read no more");
}
