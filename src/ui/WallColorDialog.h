#pragma once

#include "controllers/ColorCorrection.h"
#include "ui/PagedDialog.h"

#include <QTimer>
#include <array>
#include <memory>

class QLabel;
class QSlider;

namespace Ui {
class WallColorDialog;
}

/// What one device makes of its colours: the wall behind it on the first page, dimming and power on the
/// second. Every change is told at once; there is nothing to confirm. Main thread.
class WallColorDialog : public PagedDialog
{
    Q_OBJECT

public:
    explicit WallColorDialog(QWidget* parent = nullptr);
    ~WallColorDialog() override;

    /// Whose dialog it is, by the user's name, and how many LEDs it has.
    void setDevice(const QString& name, int nbLeds);
    /// With a light that is off nothing is to be seen on the wall.
    void setLit(bool isLit);
    /// What the reset button leads to, on each page for what it shows.
    void setDefaults(const ColorCorrection& defaults);
    void setCorrection(const ColorCorrection& correction);
    const ColorCorrection& correction() const { return m_correction; }

signals:
    /// The user has changed it, with every step of a drag.
    void correctionChanged(const ColorCorrection& correction);
    /// A change has come to rest.
    void settled();
    /// The strip is to show white, or its effect again: true while the first page shows and the user has not
    /// switched that off.
    void whiteWanted(bool white);

protected:
    void retranslate() override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Channel
    {
        QSlider* slider;
        QLabel* value;
        double ColorCorrection::*share;
    };
    std::array<Channel, 3> channels() const;

    void connectWallPage();
    void connectLightPage();
    double fullWhiteAmps() const;
    void take(const ColorCorrection& correction);
    ColorCorrection withPageReset() const;
    void settle();
    void wantWhite();
    void fillWalls();
    int wallOf(const ColorCorrection& correction) const;
    void showCorrection();
    void showTexts();
    void showTitle();

    std::unique_ptr<Ui::WallColorDialog> ui;
    QString m_deviceName;
    int m_nbLeds = 0;
    bool m_isLit = true;
    ColorCorrection m_defaults;
    ColorCorrection m_correction;
    bool m_isFilling = false; ///< what the controls say then is nobody's wish
    bool m_isSeen = false;
    bool m_isWhiteWanted = false;
    QTimer m_settleTimer; ///< runs while a change waits to be settled
};
