#include "PageCheck.h"

#include "ui/BaseDialog.h"
#include "ui/DeviceButton.h"
#include "widgets/ColorWheel.h"
#include "widgets/EffectWorkerButton.h"
#include "widgets/ElidingComboBox.h"
#include "widgets/SliderBar.h"

#include <QtWidgets>

namespace {

constexpr int kMostSteps = 300; ///< of Tab on one page

QString nameOf(const QWidget& widget)
{
    QString text = widget.property("text").toString().simplified().left(30);
    if (!text.isEmpty())
        text = QStringLiteral(" \"%1\"").arg(text);
    const QString name = widget.objectName().isEmpty() && widget.parentWidget()
                             ? QStringLiteral("in ") + widget.parentWidget()->objectName()
                             : widget.objectName();
    return QStringLiteral("%1 %2%3").arg(QLatin1String(widget.metaObject()->className()), name, text);
}

QString shown(const QSize& size)
{
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

/// A part of another control: that one answers for it.
bool isInner(const QWidget& widget)
{
    const QWidget* parent = widget.parentWidget();
    const auto* area = qobject_cast<const QAbstractScrollArea*>(parent);
    return (area && area->viewport() == &widget) || qobject_cast<const QScrollBar*>(&widget) ||
           qobject_cast<const QAbstractSpinBox*>(parent) || qobject_cast<const QComboBox*>(parent) ||
           qobject_cast<const QLineEdit*>(parent) || qobject_cast<const QAbstractItemView*>(parent) ||
           qobject_cast<const QColorDialog*>(parent) || widget.objectName().startsWith(QLatin1String("qt_"));
}

QVector<QWidget*> visibleWidgets(const QWidget& page)
{
    QVector<QWidget*> widgets;
    for (QWidget* widget : page.findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->window() == page.window() && !isInner(*widget))
            widgets.append(widget);
    }
    return widgets;
}

// --- contents ---

/// Where it stands in the page; those without a name are told apart by their number.
QString placeOf(const QWidget& widget)
{
    QString name = QLatin1String(widget.metaObject()->className());
    if (!widget.objectName().isEmpty())
        return name + u'#' + widget.objectName();
    const QWidget* parent = widget.parentWidget();
    if (!parent || widget.isWindow())
        return name;
    int number = 0;
    const auto same = parent->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget* other : same) {
        const bool isBefore = std::make_pair(other->y(), other->x()) < std::make_pair(widget.y(), widget.x());
        number += isBefore && other->isVisible() && other->metaObject() == widget.metaObject() ? 1 : 0;
    }
    return placeOf(*parent) + u' ' + name + QString::number(number);
}

/// Empty for what is nothing, 0 or false.
QString told(const QVariant& value)
{
    const bool isPicture = value.userType() == QMetaType::QPixmap && !value.value<QPixmap>().isNull();
    if (isPicture || (value.userType() == QMetaType::QIcon && !value.value<QIcon>().isNull()))
        return QStringLiteral("some");
    if (value.userType() == QMetaType::QSize)
        return shown(value.toSize());
    const QString here = QCoreApplication::applicationDirPath();
    const QString text = value.toString().simplified().remove(here);
    return text == QLatin1String("0") || text == QLatin1String("false") ? QString() : text;
}

/// Looks and state, as far as somebody has set them.
QString stateOf(const QWidget& widget)
{
    static const char* const kNames[] = {"text",
                                         "toolTip",
                                         "accessibleName",
                                         "accessibleDescription",
                                         "checked",
                                         "value",
                                         "minimum",
                                         "maximum",
                                         "singleStep",
                                         "currentIndex",
                                         "currentText",
                                         "count",
                                         "items",
                                         "placeholderText",
                                         "echoMode",
                                         "wordWrap",
                                         "toolButtonStyle",
                                         "iconSize",
                                         "focusPolicy",
                                         "windowTitle",
                                         "pixmap",
                                         "icon"};
    QStringList state;
    const auto tell = [&](const char* name, const QVariant& plain) {
        const QVariant value = widget.property(name);
        const QString text = value == plain ? QString() : told(value);
        if (!text.isEmpty())
            state += QLatin1String(name) + u'=' + text;
    };
    const QWidget plain;
    for (const char* name : kNames)
        tell(name, plain.property(name));
    for (const QByteArray& name : widget.dynamicPropertyNames()) {
        if (!name.startsWith('_'))
            tell(name.constData(), {});
    }
    if (const QLayout* layout = widget.layout())
        state += QStringLiteral("spacing=%1").arg(layout->spacing());
    const QLayout* outer = widget.isWindow() ? nullptr : widget.parentWidget()->layout();
    if (const auto* grid = qobject_cast<const QGridLayout*>(outer)) {
        int row = 0, column = 0, rows = 0, columns = 0;
        grid->getItemPosition(grid->indexOf(const_cast<QWidget*>(&widget)), &row, &column, &rows, &columns);
        state += QString::asprintf("cell=%d,%d", row, column);
    }
    if (!widget.isEnabled())
        state += QStringLiteral("disabled");
    if (widget.window()->focusWidget() == &widget)
        state += QStringLiteral("focus");
    return state.join(QLatin1String(" | "));
}

// --- room ---

QSize neededByCombo(const QComboBox& box)
{
    QStyleOptionComboBox option;
    option.initFrom(&box);
    const QRect field =
        box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
    const int text = box.fontMetrics().horizontalAdvance(box.currentText());
    const bool isCutOnPurpose = qobject_cast<const ElidingComboBox*>(&box) != nullptr;
    return {isCutOnPurpose ? 0 : box.width() - field.width() + text,
            box.height() - field.height() + box.fontMetrics().height()};
}

/// The smallest that it draws its names in has two lines.
QSize neededByDisc(const EffectWorkerButton& disc)
{
    QFont font = disc.font();
    font.setPixelSize(10);
    const QRect strip(0, 0, disc.width(), disc.height() - disc.width());
    return QFontMetrics(font)
               .boundingRect(strip, Qt::TextWordWrap | Qt::TextShowMnemonic, disc.text())
               .size() +
           QSize(0, disc.width());
}

QSize neededBy(const QWidget& widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        if (label->text().isEmpty())
            return {};
        QSize size = label->minimumSizeHint();
        if (label->wordWrap())
            size.setHeight(label->heightForWidth(label->width()));
        return size;
    }
    if (const auto* disc = qobject_cast<const EffectWorkerButton*>(&widget))
        return neededByDisc(*disc);
    if (const auto* box = qobject_cast<const QComboBox*>(&widget))
        return neededByCombo(*box);
    if (qobject_cast<const DeviceButton*>(&widget))
        return {}; // it ends a name with an ellipsis, and has a tool tip
    if (qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QAbstractSpinBox*>(&widget) ||
        qobject_cast<const SliderBar*>(&widget))
        return widget.sizeHint();
    if (const auto* edit = qobject_cast<const QLineEdit*>(&widget))
        return {edit->fontMetrics().horizontalAdvance(edit->placeholderText()),
                edit->minimumSizeHint().height()};
    return {};
}

void checkText(const QWidget& widget, QStringList& faults)
{
    const QSize needed = neededBy(widget);
    if (needed.width() > widget.width() || needed.height() > widget.height())
        faults +=
            QStringLiteral("%1 needs %2 and has %3").arg(nameOf(widget), shown(needed), shown(widget.size()));
}

void checkTable(const QTableView& table, QStringList& faults)
{
    const QHeaderView* header = table.horizontalHeader();
    for (int column = 0; column < header->count(); ++column) {
        if (static_cast<const QAbstractItemView&>(table).sizeHintForColumn(column) >
                table.columnWidth(column) ||
            header->sectionSizeHint(column) > header->sectionSize(column))
            faults += QStringLiteral("%1 cuts column %2").arg(nameOf(table)).arg(column);
    }
    if (header->length() > table.viewport()->width())
        faults += QStringLiteral("%1 has columns of %2 in %3")
                      .arg(nameOf(table))
                      .arg(header->length())
                      .arg(table.viewport()->width());
}

/// In what is scrolled the width alone has to do.
void checkPlace(const QWidget& widget, QStringList& faults)
{
    const QWidget* parent = widget.parentWidget();
    const auto* area = qobject_cast<const QAbstractScrollArea*>(parent->parentWidget());
    if (area && area->viewport() == parent) {
        if (widget.width() > parent->width())
            faults += QStringLiteral("%1 has to be scrolled sideways, %2 in %3")
                          .arg(nameOf(widget), shown(widget.size()), shown(parent->size()));
    } else if (!parent->rect().contains(widget.geometry())) {
        faults += QStringLiteral("%1 of %2 sticks out of %3 of %4")
                      .arg(nameOf(widget), shown(widget.size()), nameOf(*parent), shown(parent->size()));
    }
}

void checkSiblings(const QVector<QWidget*>& widgets, QStringList& faults)
{
    for (int i = 0; i < widgets.size(); ++i) {
        for (int j = i + 1; j < widgets.size(); ++j) {
            const QWidget& one = *widgets.at(i);
            const QWidget& other = *widgets.at(j);
            if (one.parentWidget() == other.parentWidget() && one.geometry().intersects(other.geometry()))
                faults += QStringLiteral("%1 lies on %2").arg(nameOf(one), nameOf(other));
        }
    }
}

// --- keyboard ---

bool isControl(const QWidget& widget)
{
    return widget.isEnabled() &&
           (qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QAbstractSlider*>(&widget) ||
            qobject_cast<const QAbstractSpinBox*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
            qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QAbstractItemView*>(&widget) ||
            qobject_cast<const QTextEdit*>(&widget) || qobject_cast<const QPlainTextEdit*>(&widget) ||
            qobject_cast<const SliderBar*>(&widget) || qobject_cast<const ColorWheel*>(&widget) ||
            ((widget.focusPolicy() & Qt::TabFocus) != 0 && !widget.focusProxy()));
}

/// The close button of a dialog's frame does what Escape does; the two buttons belong to the slider between.
bool hasAnotherWay(const QWidget& widget)
{
    const bool isOfFrame = qobject_cast<const BaseDialog*>(widget.window()) &&
                           widget.property("class") == QLatin1String("SysButton");
    return isOfFrame || widget.property("class") == QLatin1String("OptButton");
}

/// One of several of which Tab comes to one, and the arrow keys to the others.
bool isOneOf(const QWidget& widget, const QVector<QWidget*>& reached)
{
    return qobject_cast<const QRadioButton*>(&widget) &&
           std::any_of(reached.begin(), reached.end(), [&widget](const QWidget* other) {
               return qobject_cast<const QRadioButton*>(other) &&
                      other->parentWidget() == widget.parentWidget();
           });
}

struct Stop
{
    QWidget* widget;
    QImage picture; ///< with the focus
};

/// The widgets that the key comes to, from the first one on.
QVector<Stop> walk(QWidget& page, int key)
{
    if (QWidget* focus = QApplication::focusWidget())
        focus->clearFocus();
    QVector<Stop> stops;
    QSet<QWidget*> seen;
    for (int i = 0; i < kMostSteps; ++i) {
        QWidget* from = QApplication::focusWidget();
        QKeyEvent press(QEvent::KeyPress, key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        QCoreApplication::sendEvent(from ? from : &page, &press);
        QWidget* to = QApplication::focusWidget();
        if (!to || (to != from && seen.contains(to)))
            break;
        if (to == from)
            continue; // it has parts of its own
        stops.append({to, key == Qt::Key_Tab ? to->grab().toImage() : QImage()});
        seen.insert(to);
    }
    return stops;
}

/// The part of the ancestor, one below it, that the widget is in: what is scrolled counts where it shows.
QRect partOf(const QWidget& ancestor, const QWidget* widget)
{
    while (widget->parentWidget() != &ancestor)
        widget = widget->parentWidget();
    return QStyle::visualRect(ancestor.layoutDirection(), ancestor.rect(), widget->geometry());
}

/// From top to bottom, a row in the direction of the language; the next column may begin above again.
bool isInOrder(const QWidget& from, const QWidget& to)
{
    if (from.isAncestorOf(&to))
        return true;
    const QWidget* both = from.parentWidget();
    while (!both->isAncestorOf(&to))
        both = both->parentWidget();
    const QRect a = partOf(*both, &from);
    const QRect b = partOf(*both, &to);
    const bool isSameRow = a.top() <= b.center().y() && b.center().y() <= a.bottom();
    return isSameRow ? b.left() > a.left() : b.top() > a.bottom() || b.left() > a.right();
}

// --- accessibility ---

/// A box's own answer is what it stands at; its name is that of its label then.
QString spokenName(const QAccessibleInterface& spoken, const QWidget& widget)
{
    if (!widget.accessibleName().isEmpty())
        return widget.accessibleName();
    for (const auto& relation : spoken.relations(QAccessible::Label))
        return relation.first->text(QAccessible::Name);
    return qobject_cast<const QComboBox*>(&widget) ? QString() : spoken.text(QAccessible::Name);
}

void checkSpoken(QAccessibleInterface& spoken, const QWidget& page, QStringList& faults)
{
    const auto* widget = qobject_cast<QWidget*>(spoken.object());
    const bool isSeen =
        widget && widget->isVisible() && widget->window() == page.window() && !isInner(*widget);
    const bool isDialog = qobject_cast<const QDialog*>(widget) != nullptr;
    if (isSeen && (isControl(*widget) || isDialog)) {
        const QAccessible::Role role = spoken.role();
        if (spokenName(spoken, *widget).trimmed().isEmpty())
            faults += nameOf(*widget) + QLatin1String(" has no name for a screen reader");
        if (!isDialog && (role == QAccessible::NoRole || role == QAccessible::Client))
            faults += nameOf(*widget) + QLatin1String(" has no role for a screen reader");
        const bool hasValue = role == QAccessible::Slider || role == QAccessible::ComboBox ||
                              role == QAccessible::SpinBox || role == QAccessible::PageTabList ||
                              role == QAccessible::ColorChooser;
        if (hasValue && !spoken.valueInterface() && spoken.text(QAccessible::Value).isEmpty())
            faults += nameOf(*widget) + QLatin1String(" has no value for a screen reader");
    }
    for (int i = 0; i < spoken.childCount(); ++i) {
        if (QAccessibleInterface* child = spoken.child(i))
            checkSpoken(*child, page, faults);
    }
}

} // namespace

QStringList PageCheck::cutOff(const QWidget& page)
{
    QStringList faults;
    const QVector<QWidget*> widgets = visibleWidgets(page);
    for (const QWidget* widget : widgets) {
        checkText(*widget, faults);
        checkPlace(*widget, faults);
        if (const auto* table = qobject_cast<const QTableView*>(widget))
            checkTable(*table, faults);
    }
    checkSiblings(widgets, faults);
    return faults;
}

QStringList PageCheck::unreachable(QWidget& page)
{
    QStringList faults;
    QApplication::setActiveWindow(&page); // without waiting for a window manager
    const auto stops = walk(page, Qt::Key_Tab);
    const auto back = walk(page, Qt::Key_Backtab);
    if (QWidget* focus = QApplication::focusWidget())
        focus->clearFocus();
    QVector<QWidget*> order;
    int left = back.size();
    for (int i = 0; i < stops.size(); ++i) {
        QWidget& widget = *stops.at(i).widget;
        order.append(&widget);
        // What shows with the focus of another only is not there yet on the way back.
        if (widget.isVisible() && (--left < 0 || back.at(left).widget != &widget))
            faults += QStringLiteral("Shift+Tab goes another way to ") + nameOf(widget);
        if (i > 0 && !isInOrder(*order.at(i - 1), widget))
            faults +=
                QStringLiteral("Tab goes back from %1 to %2").arg(nameOf(*order.at(i - 1)), nameOf(widget));
        if (widget.grab().toImage() == stops.at(i).picture)
            faults += nameOf(widget) + QLatin1String(" does not show the focus");
    }
    for (QWidget* widget : visibleWidgets(page)) {
        if (isControl(*widget) && !order.contains(widget) && !isOneOf(*widget, order) &&
            !hasAnotherWay(*widget))
            faults += QStringLiteral("Tab does not come to ") + nameOf(*widget);
    }
    return faults;
}

QStringList PageCheck::unspoken(const QWidget& page)
{
    QStringList faults;
    if (QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&page)))
        checkSpoken(*spoken, page, faults);
    return faults;
}

QStringList PageCheck::contents(const QWidget& page, QHash<QString, QString>& seen)
{
    QStringList lines;
    QVector<QWidget*> widgets = visibleWidgets(page);
    widgets.prepend(const_cast<QWidget*>(&page));
    for (const QWidget* widget : qAsConst(widgets)) {
        const QString place = placeOf(*widget);
        const QString state = stateOf(*widget);
        if (seen.contains(place) && seen.value(place) == state)
            continue;
        seen.insert(place, state);
        lines += QStringLiteral("  %1: %2").arg(place, state);
    }
    lines.sort(); // in whatever order they were made
    lines.prepend(QString::number(widgets.size()) + QLatin1String(" widgets"));
    return lines;
}
