#include "ui/ControllerConfigDialog.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

namespace {
constexpr int kMinLeds = 1;
constexpr int kMaxLeds = 300;
constexpr int kMinContentWidth = 372;
constexpr int kMargin = 24;
constexpr int kFrame = 1; ///< what the style sheet draws around the dialog
} // namespace

ControllerConfigDialog::ControllerConfigDialog(QWidget* parent)
    : BaseDialog(parent)
{
    setProperty("class", "DialogBackground");
    setHeaderSize(40);

    m_deviceNameLabel = new QLabel(this);
    m_deviceNameLabel->setObjectName(QStringLiteral("deviceNameLabel"));
    // The name is the user's own text: never markup, and never wider than the dialog.
    m_deviceNameLabel->setTextFormat(Qt::PlainText);
    m_deviceNameLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    // A heading stands where the dialog begins, whatever the name's own direction.
    m_deviceNameLabel->setAlignment((isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute |
                                    Qt::AlignVCenter);
    m_help = new QLabel(this);
    m_help->setProperty("class", "hint");
    m_help->setWordWrap(true);
    m_help->setMinimumWidth(kMinContentWidth);

    auto* content = new QVBoxLayout;
    content->setContentsMargins(kMargin, 18, kMargin, 20);
    content->setSpacing(16);
    content->addWidget(m_deviceNameLabel);
    content->addWidget(makeCountRow());
    content->addWidget(m_help);
    content->addStretch();
    content->addWidget(makeButtons());

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kFrame, kFrame, kFrame, kFrame);
    layout->setSpacing(0);
    layout->addWidget(makeHeader());
    layout->addLayout(content);
    m_nbLEDBox->setFocus();
    retranslate();
}

void ControllerConfigDialog::retranslate()
{
    setWindowTitle(tr("灯带配置"));
    m_title->setText(windowTitle());
    m_closeBtn->setAccessibleName(tr("取消"));
    m_totalLabel->setText(tr("LED总数："));
    m_help->setText(tr("调整LED数量，使所有LED全部亮起。"));
    m_rejectBtn->setText(tr("取消"));
    m_okBtn->setText(tr("确定"));
}

QWidget* ControllerConfigDialog::makeHeader()
{
    auto* header = new QWidget(this);
    header->setProperty("class", "DialogHeader");
    header->setFixedHeight(headerSize());
    m_title = new QLabel(header);
    m_closeBtn = new QToolButton(header);
    m_closeBtn->setObjectName(QStringLiteral("toolButton"));
    m_closeBtn->setProperty("class", "SysButton");
    m_closeBtn->setIcon(QIcon(QStringLiteral(":/images/quit.png")));
    m_closeBtn->setFixedSize(headerSize(), headerSize());
    m_closeBtn->setFocusPolicy(Qt::NoFocus);
    connect(m_closeBtn, &QToolButton::clicked, this, &QDialog::reject);

    auto* layout = new QHBoxLayout(header);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addSpacing(kMargin); // a margin would not change sides with the direction
    layout->addWidget(m_title);
    layout->addStretch();
    layout->addWidget(m_closeBtn);
    return header;
}

QWidget* ControllerConfigDialog::makeCountRow()
{
    auto* row = new QWidget(this);
    m_totalLabel = new QLabel(row);
    m_totalLabel->setObjectName(QStringLiteral("totalLabel"));
    m_nbLEDBox = new QSpinBox(row);
    m_nbLEDBox->setObjectName(QStringLiteral("nbLEDBox"));
    m_nbLEDBox->setRange(kMinLeds, kMaxLeds);
    m_nbLEDBox->setValue(m_nbLed);
    m_nbLEDBox->setMinimumWidth(120);
    m_totalLabel->setBuddy(m_nbLEDBox);
    connect(m_nbLEDBox, qOverload<int>(&QSpinBox::valueChanged), this, [this](int value) {
        m_nbLed = value;
        emit nbLEDChanged(value);
    });

    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_totalLabel);
    layout->addStretch();
    layout->addWidget(m_nbLEDBox);
    return row;
}

QWidget* ControllerConfigDialog::makeButtons()
{
    auto* row = new QWidget(this);
    m_rejectBtn = new QPushButton(row);
    m_rejectBtn->setObjectName(QStringLiteral("rejectBtn"));
    m_rejectBtn->setAutoDefault(false);
    connect(m_rejectBtn, &QPushButton::clicked, this, &QDialog::reject);
    m_okBtn = new QPushButton(row);
    m_okBtn->setObjectName(QStringLiteral("okBtn"));
    m_okBtn->setProperty("class", "Button1");
    m_okBtn->setDefault(true);
    connect(m_okBtn, &QPushButton::clicked, this, &QDialog::accept);

    // As high as each other, though only one of them may be in a script with high lines.
    for (QPushButton* button : {m_rejectBtn, m_okBtn})
        button->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred);

    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    layout->addWidget(m_rejectBtn);
    layout->addWidget(m_okBtn);
    return row;
}

void ControllerConfigDialog::setNbLed(int nbLed)
{
    if (nbLed == m_nbLed)
        return;
    m_nbLed = nbLed;
    {
        const QSignalBlocker blocker(m_nbLEDBox);
        m_nbLEDBox->setValue(nbLed);
    }
    emit nbLEDChanged(nbLed);
}

void ControllerConfigDialog::setDeviceName(const QString& deviceName)
{
    m_deviceName = deviceName;
    m_deviceNameLabel->setText(deviceName);
    if (isVisible())
        showDeviceName();
}

void ControllerConfigDialog::showDeviceName()
{
    const QString shown = m_deviceNameLabel->fontMetrics().elidedText(m_deviceName, Qt::ElideMiddle,
                                                                      m_deviceNameLabel->width());
    m_deviceNameLabel->setText(shown);
    // Left to itself a label follows the script of its text, not the direction of the dialog.
    m_deviceNameLabel->setAlignment(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) |
                                    Qt::AlignAbsolute | Qt::AlignVCenter);
    m_deviceNameLabel->setToolTip(
        shown == m_deviceName ? QString() : QStringLiteral("<qt>%1</qt>").arg(m_deviceName.toHtmlEscaped()));
}

bool ControllerConfigDialog::event(QEvent* event)
{
    const bool handled = BaseDialog::event(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    // By now the layout and the style sheet's font are settled.
    if (event->type() == QEvent::Show || event->type() == QEvent::Resize)
        showDeviceName();
    return handled;
}
