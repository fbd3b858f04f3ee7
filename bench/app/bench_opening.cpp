// How long dialogs, the tray's menu and its panels take from the order to their picture, the first time and
// after. Limit: 100 ms each.
#include "GalleryModels.h"
#include "app/PageModels.h"
#include "effects/EffectsManager.h"
#include "ui/HelpDialog.h"
#include "ui/HotKeyEditWidget.h"
#include "ui/MainWindow.h"
#include "ui/PanelPopup.h"
#include "ui/SettingsDialog.h"
#include "ui/TrayMenu.h"
#include "viewModels/HelpDialogViewModel.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

void paint(QWidget& widget)
{
    QCoreApplication::processEvents();
    benchmark::DoNotOptimize(widget.grab());
}

void settingsDialog(benchmark::State& state)
{
    MainWindow window;
    for (auto _ : state) {
        SettingsDialog dialog(&window);
        dialog.hotkeyEditWidget()->setDescriptions(galleryHotkeyNames());
        dialog.hotkeyEditWidget()->setHotkeys(galleryHotkeys());
        dialog.show();
        paint(dialog);
    }
}

void helpDialog(benchmark::State& state)
{
    MainWindow window;
    const auto model = QSharedPointer<HelpDialogViewModel>::create();
    model->isOnline = true;
    for (auto _ : state) {
        HelpDialog dialog(model, &window);
        dialog.show();
        paint(dialog);
    }
}

void trayPanel(benchmark::State& state)
{
    EffectsManager effects(nullptr);
    const MainWindow window; // and its style sheet
    for (auto _ : state) {
        PanelPopup popup;
        const QString model = QStringLiteral("LV0127");
        popup.panel().setEffectGroups(workGroupModels(effects, model), QStringLiteral("id.effect.colorful"));
        popup.panel().setWorkers(workerModels(effects, QStringLiteral("id.effect.colorful")),
                                 QStringLiteral("id.effect.colorful.moodShadow"));
        popup.show();
        paint(popup);
    }
}

void trayMenuOf50(benchmark::State& state)
{
    const MainWindow window;
    const auto devices = galleryDevices(50);
    for (auto _ : state) {
        TrayMenu menu;
        menu.setDevices(devices);
        menu.popup({});
        paint(menu);
    }
}

void order(const char* name, void (*opening)(benchmark::State&))
{
    benchmark::RegisterBenchmark((std::string(name) + "/first").c_str(), opening)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1);
    benchmark::RegisterBenchmark(name, opening)->Unit(benchmark::kMillisecond);
}

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(name, home.path().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QDir::setCurrent(QCoreApplication::applicationDirPath());
    order("settings dialog", settingsDialog);
    order("help dialog", helpDialog);
    order("tray panel", trayPanel);
    order("tray menu of 50 devices", trayMenuOf50);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
