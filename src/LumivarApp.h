#pragma once

#include <QObject>

/// The one object that knows every other subsystem and joins them.
class LumivarApp : public QObject
{
    Q_OBJECT

public:
    explicit LumivarApp(QObject* parent);
    ~LumivarApp() override;
};
