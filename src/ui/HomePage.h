#pragma once

#include "viewModels/DeviceModel.h"
#include "viewModels/FindingCard.h"

#include <QIcon>
#include <QMap>
#include <QWidget>
#include <functional>
#include <memory>

class DeviceButton;
class QLineEdit;
class QMouseEvent;

namespace Ui {
class HomePage;
}

/// The start page: a grid of device buttons, renamed in place, beside two picture boxes. Knows no device;
/// the owner fills it and hears what the user orders. Main thread.
class HomePage : public QWidget
{
    Q_OBJECT

public:
    explicit HomePage(QWidget* parent = nullptr);
    ~HomePage() override;

public slots:
    /// Replaces the whole grid; a name that is just being edited is given up. Who stays keeps its button.
    void setControllerList(QMap<QString, DeviceModel> ctls);
    /// Shows a picture with the address that a click on it opens. Nothing happens while the box is hidden.
    void setADBox1(QString imgFilename, QString clickUrl);
    /// Why there is no device; shows while there is none.
    void setFindings(FindingCards cards);
    /// A calm line above the devices, already translated; an empty text hides it.
    void setNotice(QString text);

signals:
    // All of devices that are still shown, and from the event loop: a receiver may fill the page anew.
    void controllerEntryOrdered(QString id);
    void controllerOptOrdered(QString id);
    void controllerNameChanged(QString id, QString name);
    /// The user wants to be given access to the adapters of devices.
    void accessOrdered();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    static constexpr int kMostColumns = 6;
    static constexpr int kMargin = 15; ///< around the device buttons, pixels

    DeviceButton* makeDeviceButton(const QString& id, const DeviceModel& model);
    QLineEdit* makeNameEdit(DeviceButton* button);
    QToolButton* makeConfigButton(DeviceButton* button, const QString& id);
    void placeDeviceButtons();
    void fitColumns();
    void retranslateDeviceButtons();
    static QLineEdit* nameEditOf(const QToolButton* button);
    static QToolButton* configButtonOf(const QToolButton* button);

    bool isAdjustable(const DeviceButton* button) const;
    bool deviceButtonEvent(DeviceButton* button, QEvent* event);
    bool nameStripEvent(DeviceButton* button, const QMouseEvent* event);
    bool nameEditEvent(QLineEdit* edit, QEvent* event);
    bool configButtonEvent(QToolButton* config, QEvent* event);
    void beginRename(DeviceButton* button);
    void endRename(QLineEdit* edit);
    void showConfigButton(DeviceButton* button);
    void hideUnfocusedConfigButton(DeviceButton* button);
    bool moveInGrid(const DeviceButton* button, int key);
    void openADBox1Url();
    void order(const QString& id, const std::function<void()>& signal);

    std::unique_ptr<Ui::HomePage> ui;
    const QIcon m_configIcon{
        QStringLiteral(":/images/settings.png")}; ///< read once, the page is filled often
    QMap<QString, DeviceModel> m_devices;
    int m_columns = kMostColumns; ///< fewer on a narrow page
    QString m_adBox1File = QStringLiteral("images/product00_h.png");
    QString m_adBox1Url;
    bool m_hasPictures = false;
};
