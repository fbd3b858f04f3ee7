#pragma once

#include "effects/ColorStrapManager.h"
#include "effects/EffectsManager.h"
#include "ui/MainWindow.h"

#include <QSize>
#include <functional>

/// Puts the real window, its dialogs and the option widgets into the states a user meets, one after the
/// other. Neither devices nor a display are needed.
class Gallery
{
public:
    /// Gets a window or a widget that is shown and has come to rest, with a name for its state.
    using Visitor = std::function<void(QWidget&, const QString& name)>;

    /// Brief: of effects in one group with the same options only the first.
    Gallery(QSize windowSize, bool isBrief, Visitor visit);

    /// Everything in the language that is installed.
    void showAll();

private:
    void showHomePage();
    void showControlPages();
    void showNotices();
    void showLayoutEditor();
    void showOptionWidgets();
    void showGradientEditors();
    void showDialogs();
    void showWallColors();
    void showHotkeys();
    void showSettings();
    void showHelp();
    void showTitleBar();
    void showTray();
    /// Sends the page to the effect on a device of this model.
    void showEffect(const QString& model, const QString& effect, const QString& deviceName);
    void showLight(const QString& model, const QString& effect);
    /// What option widgets would get from a worker, the list of colour straps included.
    QJsonObject properties();
    /// The popup or dialog that has just been opened, which is closed then.
    void showFront(const QString& name);
    void show(QWidget& widget, const QString& name);

    bool m_isBrief;
    Visitor m_visit;
    EffectsManager m_effects;
    ColorStrapManager m_straps;
    MainWindow m_window;
};
