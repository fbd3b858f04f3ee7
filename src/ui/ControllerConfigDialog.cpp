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
    setWindowTitle(tr("灯带配置"));
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
    auto* help = new QLabel(tr("调整LED数量，使所有LED全部亮起。"), this);
    help->setProperty("class", "hint");
    help->setWordWrap(true);
    help->setMinimumWidth(kMinContentWidth);

    auto* content = new QVBoxLayout;
    content->setContentsMargins(kMargin, 18, kMargin, 20);
    content->setSpacing(16);
    content->addWidget(m_deviceNameLabel);
    content->addWidget(makeCountRow());
    content->addWidget(help);
    content->addStretch();
    content->addWidget(makeButtons());

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kFrame, kFrame, kFrame, kFrame);
    layout->setSpacing(0);
    layout->addWidget(makeHeader());
    layout->addLayout(content);
    m_nbLEDBox->setFocus();
}

QWidget* ControllerConfigDialog::makeHeader()
{
    auto* header = new QWidget(this);
    header->setProperty("class", "DialogHeader");
    header->setFixedHeight(headerSize());
    auto* title = new QLabel(windowTitle(), header);
    auto* close = new QToolButton(header);
    close->setObjectName(QStringLiteral("toolButton"));
    close->setProperty("class", "SysButton");
    close->setIcon(QIcon(QStringLiteral(":/images/quit.png")));
    close->setAccessibleName(tr("取消"));
    close->setFixedSize(headerSize(), headerSize());
    close->setFocusPolicy(Qt::NoFocus);
    connect(close, &QToolButton::clicked, this, &QDialog::reject);

    auto* layout = new QHBoxLayout(header);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addSpacing(kMargin); // a margin would not change sides with the direction
    layout->addWidget(title);
    layout->addStretch();
    layout->addWidget(close);
    return header;
}

QWidget* ControllerConfigDialog::makeCountRow()
{
    auto* row = new QWidget(this);
    auto* totalLabel = new QLabel(tr("LED总数："), row);
    totalLabel->setObjectName(QStringLiteral("totalLabel"));
    m_nbLEDBox = new QSpinBox(row);
    m_nbLEDBox->setObjectName(QStringLiteral("nbLEDBox"));
    m_nbLEDBox->setRange(kMinLeds, kMaxLeds);
    m_nbLEDBox->setValue(m_nbLed);
    m_nbLEDBox->setMinimumWidth(120);
    totalLabel->setBuddy(m_nbLEDBox);
    connect(m_nbLEDBox, qOverload<int>(&QSpinBox::valueChanged), this, [this](int value) {
        m_nbLed = value;
        emit nbLEDChanged(value);
    });

    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(totalLabel);
    layout->addStretch();
    layout->addWidget(m_nbLEDBox);
    return row;
}

QWidget* ControllerConfigDialog::makeButtons()
{
    auto* row = new QWidget(this);
    auto* rejectBtn = new QPushButton(tr("取消"), row);
    rejectBtn->setObjectName(QStringLiteral("rejectBtn"));
    rejectBtn->setAutoDefault(false);
    connect(rejectBtn, &QPushButton::clicked, this, &QDialog::reject);
    auto* okBtn = new QPushButton(tr("确定"), row);
    okBtn->setObjectName(QStringLiteral("okBtn"));
    okBtn->setProperty("class", "Button1");
    okBtn->setDefault(true);
    connect(okBtn, &QPushButton::clicked, this, &QDialog::accept);

    // As high as each other, though only one of them may be in a script with high lines.
    for (QPushButton* button : {rejectBtn, okBtn})
        button->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred);

    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    layout->addWidget(rejectBtn);
    layout->addWidget(okBtn);
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
    // By now the layout and the style sheet's font are settled.
    if (event->type() == QEvent::Show || event->type() == QEvent::Resize)
        showDeviceName();
    return handled;
}
