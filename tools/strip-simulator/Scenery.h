#pragma once

#include <QImage>
#include <QObject>
#include <QStringList>

class QProcessEnvironment;

/// What stands around the strips and their program, such as a desktop: it has commands and keys of its own
/// and something to show.
class Scenery : public QObject
{
    Q_OBJECT

public:
    /// What the program finds there.
    virtual void addTo(QProcessEnvironment& environment) const = 0;
    /// False when it knows no such command.
    virtual bool execute(const QString& command) = 0;
    /// The command of a key; empty when it has none.
    virtual QString commandOf(char key) const = 0;
    virtual QString keys() const = 0; ///< for people
    /// What the screen shows in whose light the strips are.
    virtual QImage picture() const = 0;
    /// How things are, in short texts.
    virtual QStringList facts() const = 0;

signals:
    void happened(const QString& what);
};
