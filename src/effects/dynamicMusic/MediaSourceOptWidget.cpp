#include "effects/dynamicMusic/MediaSourceOptWidget.h"

#include "support/log/Loggers.h"
#include "ui_MediaSourceOptWidget.h"

#include <QEvent>
#include <QJsonArray>
#include <QSignalBlocker>

namespace {

constexpr char kCaptureId[] = "captureId";
constexpr char kCapturers[] = "capturers";

} // namespace

MediaSourceOptWidget::MediaSourceOptWidget(QWidget* parent)
    : WithProperties(parent)
    , m_ui(std::make_unique<Ui::MediaSourceOptWidget>())
{
    m_ui->setupUi(this);
    m_properties.add({
        {kCapturers, {}, [this](const QJsonValue& list) { showCapturers(list); }},
        {kCaptureId, [this] { return currentId(); },
         [this](const QJsonValue& id) {
             const QSignalBlocker blocker(m_ui->devicesComboBox);
             m_ui->devicesComboBox->setCurrentIndex(m_capturerIds.indexOf(id.toString()));
             m_chosenId.clear();
         }},
    });
    connect(m_ui->devicesComboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &MediaSourceOptWidget::onDeviceSelectChanged);
    // A stand-in is current without being the user's choice: choosing it changes no index.
    connect(m_ui->devicesComboBox, QOverload<int>::of(&QComboBox::activated), this,
            &MediaSourceOptWidget::onDeviceSelectChanged);
}

MediaSourceOptWidget::~MediaSourceOptWidget() = default;

void MediaSourceOptWidget::showCapturers(const QJsonValue& list)
{
    // Blocked: the first item becomes the current one by itself, and nobody has chosen it.
    const QSignalBlocker blocker(m_ui->devicesComboBox);
    const QString chosen = currentId();
    m_ui->devicesComboBox->clear();
    m_capturerIds.clear();
    const QJsonArray capturers = list.toArray();
    for (const QJsonValue& capturer : capturers) {
        m_capturerIds.append(capturer["id"].toString());
        m_ui->devicesComboBox->addItem(capturer["desc"].toString());
    }
    if (!chosen.isEmpty())
        m_ui->devicesComboBox->setCurrentIndex(m_capturerIds.indexOf(chosen));
}

void MediaSourceOptWidget::addRow(QLabel* label, QWidget* option)
{
    const int row = m_ui->mainLayout->rowCount();
    m_ui->mainLayout->addWidget(label, row, 0);
    m_ui->mainLayout->addWidget(option, row, 1);
}

QString MediaSourceOptWidget::currentId() const
{
    return m_capturerIds.value(m_ui->devicesComboBox->currentIndex());
}

void MediaSourceOptWidget::onDeviceSelectChanged(int idx)
{
    if (idx < 0 || idx >= m_capturerIds.size() || m_capturerIds.at(idx) == m_chosenId)
        return;
    m_chosenId = m_capturerIds.at(idx);
    LOG4CPLUS_INFO(
        usrOptionsLogger(),
        toLogString(
            QStringLiteral("Audio input source changed to %1").arg(m_ui->devicesComboBox->itemText(idx))));
    emit effectPropertyChanged(kCaptureId, m_chosenId);
}

void MediaSourceOptWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        m_ui->retranslateUi(this);
    AbsWorkerWidget::changeEvent(event);
}
