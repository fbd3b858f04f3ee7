#include "widgets/ChoiceGrid.h"

#include "widgets/EffectWorkerButton.h"
#include "widgets/LineWrappedRadioButton.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGridLayout>
#include <QSignalBlocker>
#include <QTextDocument>

namespace {

constexpr int kLabelColumns = 3;
constexpr int kLabelHeight = 40;
constexpr int kLabelMargin = 20;
constexpr int kDiscColumns = 4;
constexpr int kToolTipMs = 30000;

/// Gone for the user at once. A button may be dropped by whoever hears of its own click, so the object itself
/// stays until it has come back from there.
void retire(QWidget* button)
{
    button->hide();
    button->setParent(nullptr);
    button->deleteLater();
}

QIcon iconFile(QString id)
{
    const QString path = QStringLiteral("images/icons/%1.png").arg(id.replace(u'.', u'_'));
    QIcon icon(path);
    // Without a picture of its own for the chosen state it would be tinted in the highlight colour.
    icon.addFile(path, QSize(), QIcon::Selected);
    return icon;
}

} // namespace

ChoiceGrid::ChoiceGrid(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_StyledBackground); // or the style sheet would not draw on a subclass
}

void ChoiceGrid::setChoices(const Choices& choices, const char* context, int diameter)
{
    m_choices = choices;
    m_context = context;
    m_buttons.clear();
    delete layout();
    auto* grid = new QGridLayout(this);
    const bool areDiscs = diameter > 0;
    if (!areDiscs) {
        grid->setContentsMargins(kLabelMargin, kLabelMargin, kLabelMargin, kLabelMargin);
        grid->setHorizontalSpacing(10);
    }
    grid->setVerticalSpacing(areDiscs ? 20 : 15);

    QMap<qint64, QRadioButton*> byOrder;
    int rowHeight = kLabelHeight;
    for (auto choice = choices.begin(); choice != choices.end(); ++choice) {
        const QString& id = choice.key();
        const QIcon icon = choice->icon.isNull() && areDiscs ? iconFile(id) : choice->icon;
        QRadioButton* button = areDiscs ? makeDisc(icon, diameter) : makeLabel();
        m_buttons.insert(id, {button, retire});
        translate(id);
        connect(button, &QRadioButton::toggled, this, [this, id](bool checked) {
            if (checked)
                emit chosen(id);
        });
        rowHeight = areDiscs ? button->minimumHeight() : kLabelHeight;
        QRadioButton* other = byOrder.value(choice->order);
        if (other && !areDiscs)
            other->hide(); // it has no place, and must not appear together with the grid
        byOrder.insert(other && areDiscs ? qint64(qHash(id, 0)) : choice->order, button);
    }

    const int columns = areDiscs ? kDiscColumns : kLabelColumns;
    int i = 0;
    for (QRadioButton* button : qAsConst(byOrder)) {
        grid->addWidget(button, i / columns, i % columns, areDiscs ? Qt::AlignCenter : Qt::Alignment());
        if (!areDiscs)
            grid->setColumnStretch(i % columns, 1); // else the widths hang on how texts were wrapped before
        button->raise(); // the children, too, stand in this order, in which the keyboard goes
        button->show();
        ++i;
    }
    const int rows = (choices.size() + columns - 1) / columns;
    const QMargins margins = grid->contentsMargins();
    const int between = (areDiscs ? grid->verticalSpacing() : grid->spacing()) * (rows - 1);
    setMinimumHeight(qMax(0, margins.top() + margins.bottom() + rows * rowHeight + between));
}

QRadioButton* ChoiceGrid::makeLabel()
{
    auto* button = new LineWrappedRadioButton(this);
    button->setProperty("class", "RadioButton1");
    return button;
}

QRadioButton* ChoiceGrid::makeDisc(const QIcon& icon, int diameter)
{
    auto* button = new EffectWorkerButton(this);
    button->setProperty("class", "WorkerButton");
    button->setIcon(icon);
    button->setIconSize(QSize(diameter, diameter));
    button->setDiameter(diameter);
    button->setToolTipDuration(kToolTipMs);
    return button;
}

void ChoiceGrid::translate(const QString& id)
{
    const auto translated = [this](const QString& source) {
        return source.isEmpty() ? source
                                : QCoreApplication::translate(m_context, source.toUtf8().constData());
    };
    const QString name = translated(m_choices[id].name);
    const QString tip = translated(m_choices[id].tooltip);
    QRadioButton* button = m_buttons[id].data();
    button->setText(QString(name).replace(u'&', QLatin1String("&&"))); // a name is no shortcut
    button->setAccessibleName(name);
    button->setToolTip(Qt::mightBeRichText(tip) ? QStringLiteral("<qt>%1</qt>").arg(tip.toHtmlEscaped())
                                                : tip);
}

void ChoiceGrid::setCurrent(const QString& id)
{
    const bool isThere = m_buttons.contains(id);
    for (auto each = m_buttons.constBegin(); each != m_buttons.constEnd(); ++each) {
        const QSignalBlocker blocker(each->data());
        (*each)->setAutoExclusive(false); // or one would stay chosen
        (*each)->setChecked(each.key() == id);
        (*each)->setAutoExclusive(true);
        // The keyboard comes to what is chosen, as it does once the user has been there.
        (*each)->setFocusPolicy(isThere && each.key() != id ? Qt::ClickFocus : Qt::StrongFocus);
    }
}

void ChoiceGrid::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        for (const QString& id : m_choices.keys())
            translate(id);
    }
    QWidget::changeEvent(event);
}
