#pragma once

#include "effects/ColorStrapManager.h"
#include "effects/EffectsManager.h"
#include "ui/MainWindow.h"

#include <QDir>
#include <QSize>
#include <QStringList>

/// Puts the real window, its dialogs and the option widgets into the states a user meets and saves a picture
/// of each. Neither devices nor a display are needed.
class Gallery
{
public:
    Gallery(const QDir& folder, QSize windowSize);

    /// Everything in the language that is installed, into the folder. Returns the number of pictures; -1 when
    /// one could not be written.
    int render(const QString& prefix);

private:
    void renderHomePage();
    void renderControlPages();
    void renderLayoutEditor();
    void renderOptionWidgets();
    void renderGradientEditors();
    void renderDialogs();
    void renderHotkeys();
    void renderSettings();
    void renderTray();
    /// Sends the page to the effect on a device of this model.
    void showEffect(const QString& model, const QString& effect, const QString& deviceName);
    /// What option widgets would get from a worker, the list of colour straps included.
    QJsonObject properties();
    void save(QWidget& widget, const QString& name);

    QDir m_folder;
    QString m_prefix;
    int m_count = 0;
    bool m_failed = false;
    EffectsManager m_effects;
    ColorStrapManager m_straps;
    MainWindow m_window;
};
