#pragma once

#include <QObject>

#include <initializer_list>

/// Turns signals of the process into a signal on the event loop. One object a process.
class UnixSignals : public QObject
{
    Q_OBJECT

public:
    explicit UnixSignals(std::initializer_list<int> numbers, QObject* parent = nullptr);

signals:
    void received(int number);

private:
    void readPipe();
};
