#include "Gallery.h"

#include "GalleryModels.h"
#include "app/FindingTexts.h"
#include "app/PageModels.h"
#include "app/StripPlaces.h"
#include "effects/AbsWorkerWidget.h"
#include "effects/EffectNotice.h"
#include "effects/colorful/GradientWidget.h"
#include "support/capture/DeskCaptureOption.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/ControllerConfigDialog.h"
#include "ui/FeedbackProgress.h"
#include "ui/HelpDialog.h"
#include "ui/HomePage.h"
#include "ui/HotKeyEditDialog.h"
#include "ui/HotKeyEditWidget.h"
#include "ui/PanelPopup.h"
#include "ui/QuitAskDialog.h"
#include "ui/SettingsDialog.h"
#include "ui/StripPreview.h"
#include "ui/TrayMenu.h"
#include "ui/WallColorDialog.h"
#include "viewModels/HelpDialogViewModel.h"
#include "widgets/SliderBar.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QMetaType>
#include <QVBoxLayout>
#include <memory>
#if __has_include(<QX11Info>)
#include <QX11Info>
#endif

namespace {

constexpr int kOptionWidth = 380; ///< about what the control page gives to option widgets
constexpr QSize kShortcutPage(700, 460);

/// What a user sees only after everything that is due has happened.
void settle()
{
    for (int i = 0; i < 3; ++i) {
#if __has_include(<QX11Info>)
        if (QX11Info::isPlatformX11())
            QX11Info::getTimestamp(); // after it the display has no older news
#endif
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(); // a turn that many timers fill leaves layouts for the next one
    }
}

} // namespace

Gallery::Gallery(QSize windowSize, bool isBrief, Visitor visit)
    : m_isBrief(isBrief)
    , m_visit(std::move(visit))
    , m_effects(nullptr)
    , m_straps(nullptr)
{
    m_window.resize(windowSize);
    m_window.show();
}

void Gallery::showAll()
{
    showHomePage();
    showControlPages();
    showLayoutEditor();
    showOptionWidgets();
    showGradientEditors();
    showDialogs();
    showHotkeys();
    showSettings();
    showHelp();
    showTitleBar();
    showTray();
}

void Gallery::showHomePage()
{
    m_window.switchToHomePage();
    for (const int count : {0, 1, 6, 50}) {
        m_window.homePage()->setControllerList(galleryDevices(count));
        show(m_window, QStringLiteral("home-%1").arg(count, 2, 10, QLatin1Char('0')));
    }
    m_window.homePage()->setControllerList({});
    for (const PortFindings& findings : galleryFindings()) {
        static const QString kNames[] = {"few", "many"};
        m_window.homePage()->setFindings(FindingTexts::cards(findings, AccessGrant::State::Cancelled));
        show(m_window, QStringLiteral("home-findings-%1").arg(kNames[findings.size() > 2]));
    }
    m_window.homePage()->setFindings({});
}

void Gallery::showControlPages()
{
    m_window.switchToControlPage();
    ControlPage& page = *m_window.controlPage();
    page.setControlModeVisible(false);
    const QString matrix = QStringLiteral("LV0N03");
    for (const QString& group : m_effects.groupIds()) {
        QStringList effects = m_effects.groupInfo(group).workers.values();
        effects.sort();
        const QString strip = QStringLiteral("LV0127");
        const QString model = isGroupOffered(m_effects, group, strip) ? strip : matrix;
        QStringList shown;
        for (const QString& effect : effects) {
            const EffectWorkerOptions options = m_effects.effectOptions(effect);
            const QString kind = options.sOptWidget + u' ' + options.lOptWidget;
            if (m_isBrief && shown.contains(kind))
                continue;
            shown << kind;
            showEffect(model, effect, model + QStringLiteral(":0000002A"));
        }
    }
    showNotices();
    page.setControlModeVisible(true);
    showEffect(matrix, QStringLiteral("id.effect.singleColor.singleColor1"),
               galleryDevices(4).last().name + QStringLiteral(" (LV0N03:00000001)"));
}

/// Above the effects: one that a click helps against, and the longest.
void Gallery::showNotices()
{
    const auto translated = [](const char* source) {
        return QCoreApplication::translate(EffectNotice::kContext, source);
    };
    ControlPage& page = *m_window.controlPage();
    showEffect(QStringLiteral("LV0127"), QStringLiteral("id.effect.screenSync.topHalfScreen"),
               QStringLiteral("LV0127"));
    page.setNotice(translated("屏幕共享已结束，灯带不再跟随。"), translated("请求屏幕画面"));
    show(m_window, QStringLiteral("control-notice-action"));
    page.setNotice(translated(
        "此桌面不提供屏幕画面。请安装 xdg-desktop-portal 及适合此桌面的后端，或在设置中更换场景捕获模式。"));
    show(m_window, QStringLiteral("control-notice"));
    page.setNotice({});
}

/// In the page, with some LEDs selected in the second picture of each.
void Gallery::showLayoutEditor()
{
    const QString effect = QStringLiteral("id.effect.screenSync.fullScreen");
    showEffect(QStringLiteral("LV0127"), effect, QStringLiteral("LV0127:0000002A"));
    auto* view = m_window.findChildren<QGraphicsView*>().last();
    auto* editor = qobject_cast<AbsWorkerWidget*>(view->parentWidget());
    for (const int leds : {40, 120, 300}) {
        editor->setEffectProperty(QString(), galleryLayout(leds));
        QMetaObject::invokeMethod(editor, "onFrameTick", Q_ARG(QImage, galleryFrame()));
        show(m_window, QStringLiteral("layout-%1").arg(leds, 3, 10, QLatin1Char('0')));
        const QList<QGraphicsItem*> left = view->scene()->items(QRectF(0, 0, 60, 2000));
        for (QGraphicsItem* item : left)
            item->setSelected(true);
        show(m_window, QStringLiteral("layout-%1-selected").arg(leds, 3, 10, QLatin1Char('0')));
    }
}

void Gallery::showEffect(const QString& model, const QString& effect, const QString& deviceName)
{
    ControlPage& page = *m_window.controlPage();
    const QString group = EffectWorkerOptions::groupOf(effect);
    page.setControllerName(deviceName);
    page.setProductImage(QImage(QStringLiteral("images/products/%1.jpg").arg(model)));
    page.setBrightness(0.8F);
    page.setWorkGroups(workGroupModels(m_effects, model), group);
    page.setWorkers(workerModels(m_effects, group), effect);
    showLight(model, effect);
    for (auto* options : page.findChildren<AbsWorkerWidget*>())
        options->setEffectProperty(QString(), properties());
    show(m_window, QStringLiteral("control-%1-%2").arg(model, effect.section(u'.', 2)));
}

/// As the device of this model would shine.
void Gallery::showLight(const QString& model, const QString& effect)
{
    ControlOptions device;
    device.model = model;
    device.nbLeds = model == QLatin1String("LV0N03") ? 253 : 120;
    const bool isMapped = effect.endsWith(QLatin1String("cinemaScreen"));
    const StripPlaces places = stripPlaces(device, effect, isMapped ? galleryLayout(120) : QJsonObject(),
                                           galleryShippedLayout(model));
    StripPreview& preview = m_window.controlPage()->stripPreview();
    preview.setPlaces(places.points, places.aspect);
    preview.setColors(galleryLight(places.points));
}

void Gallery::showOptionWidgets()
{
    QStringList classes;
    for (const QString& group : m_effects.groupIds()) {
        for (const QString& effect : m_effects.groupInfo(group).workers) {
            const EffectWorkerOptions options = m_effects.effectOptions(effect);
            classes << options.sOptWidget << options.lOptWidget;
        }
    }
    classes.removeDuplicates();
    classes.sort(); // the same ones first every time
    for (const QString& name : qAsConst(classes)) {
        const QMetaObject* meta = QMetaType::metaObjectForType(QMetaType::type(name.toLatin1() + '*'));
        if (!meta)
            continue;
        QWidget* const noParent = nullptr;
        const std::unique_ptr<QObject> object(meta->newInstance(Q_ARG(QWidget*, noParent)));
        auto* widget = qobject_cast<AbsWorkerWidget*>(object.get());
        if (!widget)
            continue;
        widget->setEffectProperty(QString(), properties());
        widget->resize(kOptionWidth, qMax(widget->minimumHeight(), widget->heightForWidth(kOptionWidth)));
        show(*widget, QStringLiteral("option-%1").arg(name));
        const QMap<QString, QJsonObject> states = galleryStates(name);
        for (auto state = states.begin(); state != states.end(); ++state) {
            widget->setEffectProperty(QString(), *state);
            show(*widget, QStringLiteral("option-%1-%2").arg(name, state.key()));
        }
        for (auto* box : widget->findChildren<QComboBox*>()) {
            if (!box->isVisible())
                continue;
            box->showPopup();
            show(*box->view()->window(), QStringLiteral("option-%1-%2").arg(name, box->objectName()));
            box->hidePopup();
        }
    }
}

void Gallery::showGradientEditors()
{
    QGradientStops many;
    for (int i = 0; i < 20; ++i)
        many.append({i / 19.0, QColor::fromHsv(i * 18, 255, 255)});
    QWidget page;
    auto* rows = new QVBoxLayout(&page);
    for (const QGradientStops& stops :
         {QGradientStops{{0.5, Qt::red}}, many,
          QGradientStops{
              {0.2, Qt::black}, {0.21, Qt::darkBlue}, {0.6, QColor(41, 41, 41)}, {1.0, Qt::yellow}}}) {
        auto* editor = new GradientWidget(&page);
        editor->setFixedHeight(25);
        editor->setKeyColors(stops);
        rows->addWidget(editor);
        editor->setFocus();
    }
    page.setFixedWidth(kOptionWidth);
    show(page, QStringLiteral("gradient-editors"));
    auto* editor = page.findChildren<GradientWidget*>().constLast();
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, {});
    QCoreApplication::sendEvent(editor, &menu);
    showFront(QStringLiteral("gradient-menu"));
    QKeyEvent insert(QEvent::KeyPress, Qt::Key_Insert, Qt::NoModifier);
    QCoreApplication::sendEvent(editor, &insert);
    showFront(QStringLiteral("dialog-colour"));
}

void Gallery::showDialogs()
{
    QuitAskDialog quit(&m_window);
    show(quit, QStringLiteral("dialog-quit"));
    ControllerConfigDialog count(&m_window);
    count.setDeviceName(galleryDevices(4).last().name);
    count.setNbLed(120);
    show(count, QStringLiteral("dialog-led-count"));
    showWallColors();
}

/// A new device, and one of a coloured wall with everything set.
void Gallery::showWallColors()
{
    WallColorDialog dialog(&m_window);
    auto* pages = dialog.findChild<SliderBar*>();
    const auto showPages = [&](const char* state) {
        for (int page = 1; page <= 2; ++page) {
            show(dialog, QStringLiteral("dialog-wall-%1-%2").arg(state).arg(page));
            page == 1 ? pages->moveNext() : pages->movePrevious();
            pages->setSpace(pages->space()); // the highlight is there without a slide
        }
    };
    dialog.setDevice(QStringLiteral("LV0127 (LV0127:0000002A)"), 60);
    dialog.setCorrection({});
    showPages("new");
    dialog.setDevice(galleryDevices(4).last().name + QStringLiteral(" (LV0N03:00000001)"), 300);
    dialog.setCorrection({ColorCorrection::Pipeline::Linear, 0.8, 0.65, 1.0, 4, 2500, 55});
    showPages("set");
    auto* walls = dialog.findChild<QComboBox*>();
    walls->showPopup();
    show(*walls->view()->window(), QStringLiteral("dialog-wall-list"));
    walls->hidePopup();
    dialog.setLit(false);
    show(dialog, QStringLiteral("dialog-wall-off"));
}

void Gallery::showHotkeys()
{
    HotKeyEditWidget page;
    page.resize(kShortcutPage);
    page.setDescriptions(galleryHotkeyNames());
    const QVector<HotkeyModel> hotkeys = galleryHotkeys();
    page.setHotkeys(hotkeys);
    page.setTrouble(hotkeys.at(1).id, HotkeyTrouble::Taken);
    page.setDesktopKeys(hotkeys.at(3).id, QStringLiteral("Super+F7"));
    show(page, QStringLiteral("hotkeys"));
    page.setTrouble(hotkeys.at(2).id, HotkeyTrouble::NotAllowed);
    page.activateWindow();
    page.findChild<QAbstractItemView*>()->setFocus();
    show(page, QStringLiteral("hotkeys-not-allowed"));

    HotKeyEditDialog dialog(galleryHotkeyNames().value(hotkeys.at(0).id), hotkeys.at(0).combine, &m_window);
    show(dialog, QStringLiteral("dialog-hotkey"));
    for (const bool valid : {true, false}) {
        dialog.setBindingStatus(valid);
        dialog.activateWindow();
        show(dialog, QStringLiteral("dialog-hotkey-%1").arg(valid ? "valid" : "invalid"));
    }
}

void Gallery::showSettings()
{
    const DeskCaptureOption captureModes;
    qApp->setProperty("isAdvanced", true);
    ConfigurationManager::instance()->setAppConfig(ConfigKeys::kCloseButtonAction.key,
                                                   ConfigKeys::kCloseMinimizes);
    SettingsDialog settings(&m_window);
    settings.hotkeyEditWidget()->setDescriptions(galleryHotkeyNames());
    settings.hotkeyEditWidget()->setHotkeys(galleryHotkeys());
    auto* pages = settings.findChild<SliderBar*>();
    for (const char* page : {"general", "shortcuts", "advanced"}) {
        show(settings, QStringLiteral("dialog-settings-") + QLatin1String(page));
        pages->moveNext();
        pages->setSpace(pages->space()); // the highlight is there without a slide
    }
    settings.findChild<QAbstractButton*>(QStringLiteral("btnDefaultSettings"))->click();
    showFront(QStringLiteral("box-reset"));
    settings.findChild<QAbstractButton*>(QStringLiteral("screenSyncAdvanedModeCBX"))->click();
    showFront(QStringLiteral("box-restart"));
    ConfigurationManager::instance()->setAppConfig(ConfigKeys::kScreenSyncAdvancedMode.key, true); // again
}

void Gallery::showHelp()
{
    const auto showPages = [this](const char* state, const QSharedPointer<HelpDialogViewModel>& model) {
        HelpDialog help(model, &m_window);
        auto* bar = help.findChild<SliderBar*>();
        const int pages = bar->items().split(u';').size();
        for (int page = 1; page <= pages; ++page) {
            show(help, QStringLiteral("dialog-help-%1-%2").arg(state).arg(page));
            bar->moveNext();
            bar->setSpace(bar->space()); // the highlight is there without a slide
        }
    };
    const auto model = QSharedPointer<HelpDialogViewModel>::create();
    showPages("offline", model);
    model->isOnline = true;
    model->supportMail = QStringLiteral("support@lumivar.example");
    model->webSite = QStringLiteral("www.lumivar.example/help");
    showPages("current", model);
    model->setUserContactInfo(QStringLiteral("someone@example.org"));
    model->setLatestVersion(QStringLiteral("99.1.4.270214"));
    showPages("newer", model);
    model->setDownloadPercent(42);
    showPages("loading", model);

    FeedbackProgress progress(&m_window);
    show(progress, QStringLiteral("dialog-feedback-gathering"));
    progress.setStep(FeedbackProgress::Step::Sending);
    progress.setProgress(64);
    show(progress, QStringLiteral("dialog-feedback-sending"));
}

/// Narrow and wide, in a window that has a new version.
void Gallery::showTitleBar()
{
    MainWindow window;
    window.showNewVersionBtn();
    auto* button = window.findChild<QAbstractButton*>(QStringLiteral("newVersionBtn"));
    for (const QSize size : {QSize(640, 480), m_window.size()}) {
        window.resize(size);
        window.show();
        for (const int percent : {-1, 7, 42, 100}) {
            window.setDownloadProgress(percent);
            show(window, QStringLiteral("title-%1-%2").arg(size.width()).arg(percent));
        }
    }
    button->click();
    showFront(QStringLiteral("menu-download"));
    window.setDownloadProgress(-1);
    button->click();
    showFront(QStringLiteral("box-new-version"));
}

/// The panel in the menu and alone, and the menu itself, which is made anew so that all of it is measured.
void Gallery::showTray()
{
    const auto fill = [this](DeviceControlWidget& panel, const QString& effect) {
        const QString group = EffectWorkerOptions::groupOf(effect);
        panel.setEffectGroups(workGroupModels(m_effects, QStringLiteral("LV0N03")), group);
        panel.setWorkers(workerModels(m_effects, group), effect);
        panel.setLightEnabled(true);
        panel.setBrightness(0.8F);
    };
    for (const char* effect : {"id.effect.colorful.moodShadow", "id.effect.dynamicMusic.musicMode_4",
                               "id.effect.marquee.marquee"}) {
        PanelPopup popup;
        popup.setTitle(galleryDevices(4).last().name);
        fill(popup.panel(), QLatin1String(effect));
        popup.adjustSize();
        show(popup, QStringLiteral("tray-panel-%1").arg(QString::fromLatin1(effect).section(u'.', 3)));
    }
    for (const int count : {0, 1, 5, 50}) {
        TrayMenu menu;
        menu.setDevices(galleryDevices(count));
        menu.popup({});
        show(menu, QStringLiteral("tray-menu-%1").arg(count, 2, 10, QLatin1Char('0')));
        if (count != 5)
            continue;
        QObject::connect(&menu, &TrayMenu::panelShown, [&](DeviceControlWidget* panel) {
            fill(*panel, QStringLiteral("id.effect.colorful.moodShadow"));
        });
        QMenu* entry = menu.actions().constFirst()->menu();
        entry->popup({});
        show(*entry, QStringLiteral("tray-menu-panel"));
    }
}

QJsonObject Gallery::properties()
{
    QJsonObject properties = galleryProperties();
    const IColorStrapManager* straps = &m_straps;
    properties[QStringLiteral("colorStrapManager")] = QString::number(reinterpret_cast<quintptr>(straps));
    return properties;
}

void Gallery::showFront(const QString& name)
{
    settle();
    QWidget* popup = QApplication::activePopupWidget();
    QWidget* front = popup ? popup : QApplication::activeModalWidget();
    if (!front)
        return qWarning("%s has not opened", qPrintable(name));
    show(*front, name);
    front->close();
    settle();
}

void Gallery::show(QWidget& widget, const QString& name)
{
    widget.show();
    settle();
    m_visit(widget, name);
}
