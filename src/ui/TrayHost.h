#pragma once

#include <QObject>
#include <memory>

/// Whether the desktop has a place for a tray icon. It may come long after the program and go in between.
/// Nobody is to ask the toolkit before: its first look decides for the whole run how it shows an icon.
/// Main thread.
class TrayHost : public QObject
{
    Q_OBJECT

public:
    explicit TrayHost(QObject* parent = nullptr);
    ~TrayHost() override;

    bool isAvailable() const { return m_isAvailable; }

signals:
    void availableChanged(bool isAvailable);

private:
    void setAvailable(bool isAvailable);
    /// The system's way to hear of it, which calls setAvailable.
    std::unique_ptr<QObject> makeWatch();

    bool m_isAvailable = false;
    std::unique_ptr<QObject> m_watch;
};
