#pragma once

#include "support/net/ProductSettings.h"

#include <QObject>
#include <QString>
#include <memory>

/// Fetches what the home page's first picture box shows, keeps picture and state on the disk, and tells of
/// them. Without a service address nothing is ever sent. Main thread.
class ADManager : public QObject
{
    Q_OBJECT

public:
    explicit ADManager(QObject* parent = nullptr);
    /// With other settings than those of the build, for tests.
    ADManager(ProductSettings settings, const QString& resourcesPath, QObject* parent = nullptr);
    ~ADManager() override;

    /// Asks the service, a second time after a pause. To be called once, at start.
    void requestADInfo();

    /// The pause before a second try, for tests.
    void setRetryPause(int ms);

signals:
    void sendUpadteDone(QString image_filename, QString hrefUrl);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
