#pragma once

#include <QObject>
#include <memory>

/// Turns the system's requests to end (SIGTERM, SIGINT, SIGHUP; the console's events on Windows) into a
/// signal on the main thread, so that they take the same way out as a quit. As long as the object lives,
/// further requests cannot kill the process before its devices are dark. One object, main thread.
class TerminationSignals : public QObject
{
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

signals:
    void terminationRequested();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
