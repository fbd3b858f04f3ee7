#include "ui/MainWindow.h"

#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/HomePage.h"
#include "ui/Languagemanager.h"
#include "ui/QuitAskDialog.h"
#include "ui_MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDebug>
#include <QFile>
#include <QMessageBox>
#include <QMetaMethod>
#include <QScreen>
#include <QWindow>

namespace {

constexpr char kPointerProperty[] = "mainWindowPointer";
constexpr int kNoBorder = -1; ///< no point lies on it
constexpr int kOutline = 1;   ///< what the style sheet draws around the window
constexpr QSize kSmallest(640, 480);
/// The title bar of a narrower window has no room for the name and the buttons in every language.
constexpr int kNarrow = 800;
constexpr int kMenuSpacing = 12;

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::MainWindow>())
{
    LanguageManager::instance()->loadSavedLanguage();
    ui->setupUi(this);
    setAttribute(Qt::WA_StyledBackground); // or the style sheet would not draw on a subclass
    loadStyleSheet();

    for (QPushButton* button : {ui->pushButton_settings, ui->pushButton_home, ui->pushButton_help,
                                ui->pushButton_on, ui->pushButton_off})
        button->setProperty("class", "MenuBtn");
    ui->stackedWidget->setCurrentWidget(ui->homePage);
    showDownload();
    showShortcuts();

    setWindowFlags(Qt::FramelessWindowHint);
    setWindowIcon(QIcon(QStringLiteral("images/icon.png")));
    qApp->setProperty(kPointerProperty,
                      static_cast<qulonglong>(reinterpret_cast<quintptr>(static_cast<QWidget*>(this))));
    // The close button may only hide the window: that must not refuse the end of the user's desktop.
    QGuiApplication::setFallbackSessionManagementEnabled(false);
    qApp->installEventFilter(this);
    m_frame = makeFrame();
    connect(windowHandle(), &QWindow::screenChanged, this, &MainWindow::followScreen);
    followScreen();
    ui->stackedWidget->setFocus(); // no button stands out until the keyboard is used

    const QImage logo(QStringLiteral("images/logo.png"));
    ui->logoWid->setImg(logo);
    ui->logoWid->setVisible(!logo.isNull());

    connect(ui->pushButton_home, &QPushButton::clicked, this, &MainWindow::onHomeButtonClicked);
    connect(ui->pushButton_on, &QPushButton::clicked, this, &MainWindow::onAllOnBtnClicked);
    connect(ui->pushButton_off, &QPushButton::clicked, this, &MainWindow::onAllOffBtnClicked);
    connect(ui->pushButton_settings, &QPushButton::clicked, this,
            &MainWindow::on_pushButton_settings_clicked);
    connect(ui->pushButton_help, &QPushButton::clicked, this, &MainWindow::on_pushButton_help_clicked);
    connect(ui->toolButton_min, &QToolButton::clicked, this, &MainWindow::on_toolButton_min_clicked);
    connect(ui->toolButton_close, &QToolButton::clicked, this, &MainWindow::on_toolButton_close_clicked);
    connect(ui->newVersionBtn, &QPushButton::clicked, this, &MainWindow::onNewVersionBtnClicked);
}

MainWindow::~MainWindow()
{
    qApp->setProperty(kPointerProperty, QVariant());
}

void MainWindow::loadStyleSheet()
{
    QFile file(QStringLiteral(":/styles/default.qss"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qCritical() << "[MainWindow]: Failed to open the styleSheet file" << file.errorString();
        return;
    }
    const QString style = QString::fromUtf8(file.readAll());
    qApp->setStyleSheet(style);
    setStyleSheet(style);
}

void MainWindow::showShortcuts()
{
    for (QPushButton* button : {ui->pushButton_settings, ui->pushButton_home, ui->pushButton_help,
                                ui->pushButton_on, ui->pushButton_off})
        button->setToolTip(button->shortcut().toString(QKeySequence::NativeText));
}

void MainWindow::switchToControlPage()
{
    // Who came by the keyboard goes on with the page's first choice; nobody else sees a frame around it.
    const QWidget* focus = focusWidget();
    if (focus && (focus->focusPolicy() & Qt::TabFocus) == 0)
        ui->stackedWidget->setFocus();
    ui->stackedWidget->setCurrentWidget(ui->controlPage);
    qInfo() << "The mainwindow has been switched to control page";
}

void MainWindow::switchToHomePage()
{
    ui->stackedWidget->setCurrentWidget(ui->homePage);
    qInfo() << "The mainwindow has switched to the home page";
}

bool MainWindow::isHomePage() const
{
    return ui->stackedWidget->currentWidget() == ui->homePage;
}

HomePage* MainWindow::homePage() const
{
    return ui->homePage;
}

ControlPage* MainWindow::controlPage() const
{
    return ui->controlPage;
}

void MainWindow::setTrayAvailable(bool isAvailable)
{
    m_hasTray = isAvailable;
    if (m_isPutAway)
        putAway();
}

void MainWindow::putAway()
{
    m_isPutAway = true;
    if (m_hasTray || !canMinimise())
        hide();
    else
        showMinimized();
}

void MainWindow::comeToFront()
{
    // With a dialog before it the two would lose each other.
    if (isVisible() && !isActiveWindow() && !canBeRaised() && !QApplication::activeModalWidget()) {
        hide();
        show();
    }
    raise();
    activateWindow();
}

void MainWindow::showNewVersionBtn()
{
    m_hasNewVersion = true;
    showDownload();
}

void MainWindow::setDownloadProgress(int percent)
{
    m_downloadPercent = percent;
    showDownload();
}

void MainWindow::showDownload()
{
    ProgressButton* button = ui->newVersionBtn;
    const bool isLoading = m_downloadPercent >= 0;
    button->setPercent(m_downloadPercent);
    button->setText(isLoading ? QStringLiteral("%1 %").arg(m_downloadPercent) : tr("new"));
    const QString hint = isLoading ? tr("正在下载最新安装包") : tr("检测到新版本，是否下载最新安装包？");
    button->setToolTip(hint);
    button->setAccessibleDescription(hint);
    button->setVisible(m_hasNewVersion || isLoading);
}

void MainWindow::setNotice(const QString& text)
{
    ui->noticeLabel->setText(text);
    ui->noticeLabel->setHidden(text.isEmpty());
}

void MainWindow::sizeToScreen()
{
    resize(openingSize(size(), screen()->availableSize()).expandedTo(minimumSize()));
}

void MainWindow::fitToScreen()
{
    setGeometry(fittedGeometry(geometry(), screen()->geometry(), minimumSize()));
}

void MainWindow::followScreen()
{
    setMinimumSize(kSmallest.boundedTo(screen()->availableSize()));
}

void MainWindow::hideUnusedButtons()
{
    ui->pushButton_settings->setVisible(
        isSignalConnected(QMetaMethod::fromSignal(&MainWindow::settingsBtnTriggered)));
    ui->pushButton_help->setVisible(
        isSignalConnected(QMetaMethod::fromSignal(&MainWindow::requestShowHelpDlg)));
}

bool MainWindow::isFillingScreen() const
{
    return isMaximized() || isFullScreen();
}

WindowRegion MainWindow::regionAt(QPoint position) const
{
    QVector<QRect> buttons;
    if (position.y() < m_titleHeight) {
        for (const QAbstractButton* button : ui->titleBar->findChildren<QAbstractButton*>()) {
            if (button->isVisibleTo(this))
                buttons += QRect(button->mapTo(this, QPoint()), button->size());
        }
    }
    return windowRegionAt(position, size(), m_titleHeight, isFillingScreen() ? kNoBorder : m_borderWidth,
                          buttons);
}

void MainWindow::changeEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::LanguageChange:
        ui->retranslateUi(this);
        showDownload();
        showShortcuts();
        break;
    case QEvent::LocaleChange:
        LanguageManager::instance()->loadSavedLanguage();
        break;
    case QEvent::WindowStateChange: {
        // Without the outline the close button reaches into the corner of the screen.
        const int outline = isFillingScreen() ? 0 : kOutline;
        ui->windowLayout->setContentsMargins(outline, outline, outline, outline);
        noticeOpening();
        break;
    }
    case QEvent::StyleChange:
        // A new sheet of the application's, from the file that can be edited while the program runs.
        if (styleSheet() != qApp->styleSheet())
            setStyleSheet(qApp->styleSheet());
        break;
    default:
        break;
    }
    QWidget::changeEvent(event);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    on_toolButton_close_clicked();
    event->ignore();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != qApp || event->type() != QEvent::Quit)
        return QWidget::eventFilter(watched, event);
    // The session manager's last word. It would have the windows closed first, and this one ask.
    QCoreApplication::quit();
    return true;
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    const bool isNarrow = width() < kNarrow;
    ui->nameWid->setHidden(isNarrow);
    ui->menuLayout->setSpacing(isNarrow ? 0 : kMenuSpacing);
    QWidget::resizeEvent(event);
}

void MainWindow::showEvent(QShowEvent* event)
{
    noticeOpening();
    QWidget::showEvent(event);
}

void MainWindow::noticeOpening()
{
    m_isPutAway = m_isPutAway && isMinimized();
    if (!m_isPutAway && isVisible())
        emit opened();
}

void MainWindow::mousePressEvent(QMouseEvent* event)
{
    QWidget::mousePressEvent(event);
}

void MainWindow::mouseMoveEvent(QMouseEvent* event)
{
    QWidget::mouseMoveEvent(event);
}

void MainWindow::mouseReleaseEvent(QMouseEvent* event)
{
    QWidget::mouseReleaseEvent(event);
}

void MainWindow::onHomeButtonClicked()
{
    ui->stackedWidget->setCurrentWidget(ui->homePage);
    qInfo() << "The mainWindow has switched to the home page";
}

void MainWindow::onAllOnBtnClicked()
{
    emit allStrapOnOff(true);
}

void MainWindow::onAllOffBtnClicked()
{
    emit allStrapOnOff(false);
}

void MainWindow::on_pushButton_settings_clicked()
{
    emit settingsBtnTriggered();
}

void MainWindow::on_pushButton_help_clicked()
{
    emit requestShowHelpDlg();
}

void MainWindow::on_toolButton_min_clicked()
{
    showMinimized();
}

void MainWindow::on_toolButton_close_clicked()
{
    auto* config = ConfigurationManager::instance();
    const QLatin1String key(ConfigKeys::kCloseButtonAction.key);
    const QJsonValue stored = config->appConfig(key);
    bool isQuit = stored.toString() == QLatin1String(ConfigKeys::kCloseQuits);
    if (stored.isUndefined() || stored.isNull()) {
        QuitAskDialog dialog(this);
        if (!m_hasTray)
            dialog.offerNoTray();
        if (dialog.exec() != QDialog::Accepted)
            return; // cancelled, or the program ends meanwhile
        isQuit = dialog.quit();
        if (dialog.remember())
            config->setAppConfig(
                key, QLatin1String(isQuit ? ConfigKeys::kCloseQuits : ConfigKeys::kCloseMinimizes));
    }
    if (!isQuit)
        return putAway();
    qInfo() << "The user clicks the close button of the main window and is about to exit the application";
    QCoreApplication::quit();
}

void MainWindow::onNewVersionBtnClicked()
{
    if (m_downloadPercent >= 0) { // a click by mistake ends nothing
        connect(ui->newVersionBtn->openMenu(tr("取消下载")), &QAction::triggered, this,
                &MainWindow::requestCancelDownload);
        return;
    }
    auto* question = new QMessageBox(QMessageBox::Question, windowTitle(),
                                     tr("检测到新版本，是否下载最新安装包？"), QMessageBox::NoButton, this);
    question->setAttribute(Qt::WA_DeleteOnClose);
    QPushButton* yes = question->addButton(tr("是"), QMessageBox::YesRole);
    question->addButton(tr("否"), QMessageBox::NoRole);
    question->setDefaultButton(yes);
    connect(yes, &QPushButton::clicked, this, [this] {
        qInfo() << "The user has reqeusted an update";
        m_hasNewVersion = false;
        showDownload();
        emit requestUpdateAppVersion();
    });
    question->open();
}
