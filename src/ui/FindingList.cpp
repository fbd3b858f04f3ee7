#include "ui/FindingList.h"

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kMargin = 16;
constexpr int kGap = 12;

QLabel* makeText(const QString& text, const char* kind)
{
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setProperty("class", QLatin1String(kind));
    return label;
}

} // namespace

FindingList::FindingList(QWidget* parent)
    : QScrollArea(parent)
{
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void FindingList::setCards(const FindingCards& cards)
{
    if (m_cards == cards)
        return;
    m_cards = cards;
    fillWhenSeen();
}

/// Ports are asked every few seconds for as long as the program waits in the tray, too.
void FindingList::fillWhenSeen()
{
    m_isFilled = false;
    if (isVisible())
        fill();
}

void FindingList::showEvent(QShowEvent* event)
{
    if (!m_isFilled)
        fill();
    QScrollArea::showEvent(event);
}

void FindingList::fill()
{
    m_isFilled = true;
    if (QWidget* old = takeWidget()) {
        old->hide();
        old->deleteLater(); // its button may be what led here
    }
    auto* page = new QWidget;
    page->setProperty("class", "regionWidget");
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kGap);
    if (m_cards.isEmpty())
        column->addWidget(makeWelcome());
    for (const FindingCard& card : qAsConst(m_cards))
        column->addWidget(makeCard(card));
    if (!m_cards.isEmpty())
        column->addStretch();
    setWidget(page);
    page->show();
}

QWidget* FindingList::makeWelcome()
{
    auto* welcome = new QWidget;
    welcome->setProperty("class", "regionWidget");
    auto* column = new QVBoxLayout(welcome);
    column->setSpacing(kGap / 2);
    column->addStretch();
    for (QLabel* label : {makeText(tr("未发现设备，请连接灯带"), "findingTitle"),
                          makeText(tr("用 USB 数据线把灯带接到电脑，它会自动出现在这里。"), "hint")}) {
        label->setAlignment(Qt::AlignCenter);
        column->addWidget(label);
    }
    column->addStretch();
    return welcome;
}

QWidget* FindingList::makeCard(const FindingCard& card)
{
    auto* frame = new QFrame;
    frame->setProperty("class", "FindingCard");
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(kMargin, kGap, kMargin, kMargin);
    column->setSpacing(kGap / 2);
    column->addWidget(makeText(card.title, "findingTitle"));
    column->addWidget(makeText(card.advice, "findingAdvice"));
    if (!card.commands.isEmpty())
        column->addWidget(makeCommands(card.commands));
    if (card.access != FindingCard::Access::None) {
        auto* button = new QPushButton(tr("允许使用"));
        button->setObjectName(QStringLiteral("accessButton"));
        button->setProperty("class", "Button1");
        button->setEnabled(card.access == FindingCard::Access::Offered);
        connect(button, &QPushButton::clicked, this, &FindingList::accessOrdered);
        column->addSpacing(kGap / 2);
        column->addWidget(button, 0, Qt::AlignLeft);
    }
    return frame;
}

QWidget* FindingList::makeCommands(const QStringList& commands)
{
    auto* row = new QWidget;
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, kGap / 2, 0, 0);
    line->setSpacing(kGap);
    auto* text = makeText(commands.join(u'\n'), "findingCommand");
    text->setObjectName(QStringLiteral("commands"));
    text->setLayoutDirection(Qt::LeftToRight); // a command is written so everywhere
    text->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    line->addWidget(text, 1);
    auto* copy = new QPushButton(tr("复制"));
    copy->setObjectName(QStringLiteral("copyButton"));
    connect(copy, &QPushButton::clicked, this, [copy, commands] {
        QGuiApplication::clipboard()->setText(commands.join(u'\n'));
        copy->setText(tr("已复制"));
    });
    line->addWidget(copy, 0, Qt::AlignVCenter);
    return row;
}

void FindingList::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        fillWhenSeen();
    QScrollArea::changeEvent(event);
}
