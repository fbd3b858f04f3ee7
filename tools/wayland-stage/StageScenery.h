#pragma once

#include "Picture.h"
#include "Scenery.h"
#include "WaylandStage.h"

#include <QElapsedTimer>
#include <QTimer>

/// The stage with a picture that moves, and its user: commands and keys say what he and his desktop do.
class StageScenery : public Scenery
{
    Q_OBJECT

public:
    /// How the user answers when he is asked: by a command, or at once.
    enum class Answer { Ask, Yes, No };

    /// Whoever brings the token of an earlier consent is not asked; an empty one stands for none.
    StageScenery(int screens, Answer answer, const QString& token);

    /// False, with a warning, where something does not start.
    bool start();
    /// A method of the portal goes wrong.
    void setFault(const QString& method, ScreenPortal::Fault fault);

    void addTo(QProcessEnvironment& environment) const override;
    bool execute(const QString& command) override;
    QString commandOf(char key) const override;
    QString keys() const override;
    QImage picture() const override { return m_picture; }
    QStringList facts() const override;

private:
    /// Something that the user or the desktop does.
    struct Deed
    {
        const char* command;
        char key;
        const char* name; ///< in the line of keys; empty for one that is told elsewhere
        void (StageScenery::*act)();
    };
    static const QVector<Deed>& deeds();

    void consent() { answer(0); }
    void refuse() { answer(1); }
    void answer(uint how);
    void endSharing();
    void killOrBringServer();
    void killOrBringPortal();
    void forgetConsent();
    void sleepOrWake();
    void lockOrUnlock();

    void onAsked();
    void onAnswered(uint how);
    void paint();

    WaylandStage m_stage;
    const int m_screens;
    const Answer m_answer;
    DriftingLights m_lights;
    QElapsedTimer m_clock;
    QTimer m_pace;
    QImage m_picture; ///< of the first screen
    bool m_isRead = false;
};
