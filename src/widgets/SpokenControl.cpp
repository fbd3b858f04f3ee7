#include "widgets/SpokenControl.h"

#include <QAccessibleWidget>
#include <QWidget>

namespace {

class SpokenInterface : public QAccessibleWidget
{
public:
    SpokenInterface(QWidget* widget, QAccessible::Role role)
        : QAccessibleWidget(widget, role)
    {
    }

    QString text(QAccessible::Text which) const override
    {
        // Asked anew each time: while the widget is destroyed only its base is left.
        const auto* control = dynamic_cast<const SpokenControl*>(object());
        return which == QAccessible::Value && control ? control->spokenValue()
                                                      : QAccessibleWidget::text(which);
    }
};

QAccessibleInterface* makeInterface(const QString&, QObject* object)
{
    const auto* control = dynamic_cast<SpokenControl*>(object);
    return control ? new SpokenInterface(static_cast<QWidget*>(object), control->spokenRole()) : nullptr;
}

} // namespace

SpokenControl::SpokenControl()
{
    static const bool isInstalled = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    Q_UNUSED(isInstalled)
}

void SpokenControl::tellValue(QWidget* control)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleValueChangeEvent event(control, QVariant());
    QAccessible::updateAccessibility(&event);
}
