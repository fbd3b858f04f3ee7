#pragma once

#include <QIcon>
#include <QMap>
#include <QSharedPointer>
#include <QWidget>

class QRadioButton;

/// Several to choose from, of which one stands chosen: labels, or discs with pictures, row by row in their
/// order. Knows nothing of what they stand for. Names and tips are source texts of one translation context
/// and follow the language. May be filled anew by whoever hears of a choice. Main thread.
class ChoiceGrid : public QWidget
{
    Q_OBJECT

public:
    struct Choice
    {
        QString name;
        QString tooltip;
        int order = 0; ///< ascending
        QIcon icon;    ///< of a disc; where there is none a file named after the id
    };
    using Choices = QMap<QString, Choice>; ///< by id

    explicit ChoiceGrid(QWidget* parent = nullptr);

    /// Discs of this diameter in pixels, four to a row, of two with one order the later one where the hash of
    /// its id puts it; or for 0 labels, three to a row, of two with one order the later one in the place.
    void setChoices(const Choices& choices, const char* context, int diameter = 0);
    /// Emits nothing; an unknown id leaves nothing chosen.
    void setCurrent(const QString& id);
    QSharedPointer<QRadioButton> button(const QString& id) const { return m_buttons.value(id); }

signals:
    /// By the user.
    void chosen(QString id);

protected:
    void changeEvent(QEvent* event) override;

private:
    QRadioButton* makeLabel();
    QRadioButton* makeDisc(const QIcon& icon, int diameter);
    void translate(const QString& id);

    Choices m_choices;
    const char* m_context = "";
    QMap<QString, QSharedPointer<QRadioButton>> m_buttons;
};
