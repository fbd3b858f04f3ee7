#include "ui/HomePage.h"

#include "ui/DeviceButton.h"
#include "ui_HomePage.h"

#include <QDebug>
#include <QDesktopServices>
#include <QEvent>
#include <QGridLayout>
#include <QImageReader>
#include <QLineEdit>
#include <QScrollBar>
#include <QUrl>

namespace {
constexpr int kConfigSide = 20;
constexpr QSize kDeviceSize(110, 130);
constexpr int kEditHeight = 22;
constexpr int kSpacing = 10;
// Widths of the two halves of the page.
constexpr int kSixColumns = 760;
constexpr int kLeastPictures = 180;
constexpr int kMostPictures = 560;
constexpr char kSecondPicture[] = "images/product01_h.png";
} // namespace

HomePage::HomePage(QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::HomePage>())
{
    ui->setupUi(this);
    ui->ADBox1->installEventFilter(this);
    ui->controllerButtonScrollArea->installEventFilter(this);
    ui->ADBox2Header->setVisible(QImageReader(QLatin1String(kSecondPicture)).canRead());
    connect(ui->findingList, &FindingList::accessOrdered, this, &HomePage::accessOrdered);
    setControllerList({});
}

HomePage::~HomePage() = default;

void HomePage::setControllerList(QMap<QString, DeviceModel> ctls)
{
    QMap<QString, DeviceModel> before;
    before.swap(m_devices);
    QString edited; // an editor goes with its button, and leaves the focus to the next one
    for (auto it = ctls.begin(); it != ctls.end(); ++it) {
        const QToolButton* known = before.value(it.key()).button.data();
        if (known && nameEditOf(known)->isHidden()) {
            it->button = before.take(it.key()).button;
            it->button->setIcon(it->icon);
            qobject_cast<DeviceButton*>(it->button.data())->setName(it->name);
        } else {
            edited = known && nameEditOf(known)->hasFocus() ? it.key() : edited;
            it->button.reset(makeDeviceButton(it.key(), *it));
            it->button->show();
        }
    }
    m_devices = ctls;
    for (const DeviceModel& gone : qAsConst(before)) // a name that is being edited is not committed
        nameEditOf(gone.button.data())->removeEventFilter(this);
    before.clear();
    placeDeviceButtons();

    ui->findingList->setVisible(ctls.isEmpty());
    ui->controllerButtonScrollArea->setVisible(!ctls.isEmpty());
    retranslateDeviceButtons();
    if (!edited.isEmpty())
        m_devices[edited].button->setFocus(Qt::OtherFocusReason);
}

void HomePage::placeDeviceButtons()
{
    delete ui->devicesContainer->layout();
    auto* grid = new QGridLayout(ui->devicesContainer);
    grid->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    grid->setVerticalSpacing(20);
    grid->setHorizontalSpacing(kSpacing);
    int i = 0;
    QWidget* before = nullptr;
    for (const DeviceModel& model : qAsConst(m_devices)) {
        grid->addWidget(model.button.data(), i / m_columns, i % m_columns, Qt::AlignLeft | Qt::AlignTop);
        ++i;
        if (before) // they came in another order
            setTabOrder(before, model.button.data());
        before = configButtonOf(model.button.data());
        setTabOrder(model.button.data(), nameEditOf(model.button.data()));
        setTabOrder(nameEditOf(model.button.data()), before);
    }
    grid->addItem(new QSpacerItem(20, 40, QSizePolicy::Minimum, QSizePolicy::Expanding), 100, 0);
    grid->addItem(new QSpacerItem(40, 20, QSizePolicy::Expanding, QSizePolicy::Minimum), 0, 7);
}

/// As many columns as the area has room for beside its scroll bar, which comes and goes.
void HomePage::fitColumns()
{
    const QScrollArea& area = *ui->controllerButtonScrollArea;
    const int room = area.width() - area.verticalScrollBar()->sizeHint().width() - 2 * kMargin + kSpacing;
    const int columns = qBound(1, room / (kDeviceSize.width() + kSpacing), kMostColumns);
    if (columns == m_columns)
        return;
    m_columns = columns;
    placeDeviceButtons();
}

/// Two megabytes each, which a window in the tray does without.
void HomePage::showEvent(QShowEvent* event)
{
    if (m_hasPictures)
        return QWidget::showEvent(event);
    m_hasPictures = true;
    ui->ADBox1->setImg(QImage(m_adBox1File));
    ui->ADBox2->setImg(QImage(QLatin1String(kSecondPicture)));
    QWidget::showEvent(event);
}

void HomePage::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (isHidden()) // another page shows, and this one is soon back
        return;
    m_hasPictures = false;
    ui->ADBox1->ImageWidget::setImg({});
    ui->ADBox2->ImageWidget::setImg({});
}

/// The pictures take what six columns of devices leave, within their limits.
void HomePage::resizeEvent(QResizeEvent* event)
{
    const int room = ui->horizontalLayout->contentsRect().width() - ui->horizontalLayout->spacing();
    const int pictures = qBound(kLeastPictures, room - kSixColumns, kMostPictures);
    ui->ADBox1->setMaximumWidth(pictures);
    ui->ADBox2Panel->setMaximumWidth(pictures);
    QWidget::resizeEvent(event);
}

DeviceButton* HomePage::makeDeviceButton(const QString& id, const DeviceModel& model)
{
    auto* button = new DeviceButton(ui->devicesContainer);
    button->setIcon(model.icon);
    button->setIconSize(QSize(100, 100));
    button->setFixedSize(kDeviceSize);
    button->setName(model.name);
    button->setProperty("class", "DeviceButton");
    button->setProperty("role", "deviceButton");
    button->setProperty("controllerId", id);
    button->setProperty("isLeftButtonPress", false);
    button->setProperty("nameEdit", QVariant::fromValue(makeNameEdit(button)));
    button->setProperty("configBtn", QVariant::fromValue(makeConfigButton(button, id)));
    button->installEventFilter(this);
    connect(button, &QToolButton::clicked, this,
            [this, id] { order(id, [this, id] { emit controllerEntryOrdered(id); }); });
    connect(button, &DeviceButton::renameOrdered, this, [this, button] {
        beginRename(button);
        nameEditOf(button)->selectAll();
    });
    return button;
}

QLineEdit* HomePage::makeNameEdit(DeviceButton* button)
{
    auto* edit = new QLineEdit(button);
    edit->setGeometry(0, kDeviceSize.height() - kEditHeight, kDeviceSize.width(), kEditHeight);
    edit->setAlignment(Qt::AlignCenter);
    edit->setText(button->text());
    edit->setProperty("class", "DeviceRenameEditor");
    edit->setProperty("role", "deviceButtonNameEdit");
    edit->hide();
    edit->installEventFilter(this);
    return edit;
}

QToolButton* HomePage::makeConfigButton(DeviceButton* button, const QString& id)
{
    auto* config = new QToolButton(button);
    config->hide();
    config->setIcon(m_configIcon);
    config->setIconSize(QSize(kConfigSide, kConfigSide));
    config->setFixedSize(kConfigSide, kConfigSide);
    config->setStyleSheet(QStringLiteral("background-color: transparent;"));
    config->setProperty("class", "DeviceConfigButton");
    config->setProperty("role", "deviceButtonConfig");
    config->installEventFilter(this);
    connect(config, &QToolButton::clicked, this,
            [this, id] { order(id, [this, id] { emit controllerOptOrdered(id); }); });
    return config;
}

void HomePage::retranslateDeviceButtons()
{
    for (const DeviceModel& model : qAsConst(m_devices)) {
        auto* config = configButtonOf(model.button.data());
        config->setToolTip(tr("灯带配置"));
        config->setAccessibleName(tr("灯带配置"));
        nameEditOf(model.button.data())->setAccessibleName(tr("设备名称"));
    }
}

/// From the event loop, not from inside the button: its receiver may run a dialog, and the buttons be
/// replaced.
void HomePage::order(const QString& id, const std::function<void()>& signal)
{
    const auto tell = [this, id, signal] {
        if (m_devices.contains(id))
            signal();
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

void HomePage::setADBox1(QString imgFilename, QString clickUrl)
{
    if (!ui->ADBox1->isVisible())
        return;
    const QImage picture(imgFilename);
    if (picture.isNull()) {
        qWarning().noquote().nospace() << "[HomePage]: Feilad to load AD iamge. path:" << imgFilename;
        return;
    }
    ui->ADBox1->setImg(picture);
    m_adBox1File = imgFilename;
    m_adBox1Url = clickUrl;
    ui->ADBox1->setCursor(clickUrl.isEmpty() ? Qt::ArrowCursor : Qt::PointingHandCursor);
}

void HomePage::setFindings(FindingCards cards)
{
    ui->findingList->setCards(cards);
}

void HomePage::setNotice(QString text)
{
    ui->noticeLabel->setText(text);
    ui->noticeLabel->setHidden(text.isEmpty());
}

void HomePage::openADBox1Url()
{
    // The address comes from the network: it leads to a page of the web, and starts nothing on this machine.
    const QUrl url(m_adBox1Url);
    const bool allowed = url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http");
    if (!allowed || !QDesktopServices::openUrl(url))
        qWarning().noquote().nospace() << "[HomePage]: Failed to open url: " << m_adBox1Url;
}

void HomePage::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        ui->retranslateUi(this);
        retranslateDeviceButtons();
    }
    QWidget::changeEvent(event);
}
