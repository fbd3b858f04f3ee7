#pragma once

#include "viewModels/FindingCard.h"

#include <QScrollArea>

/// Why there is no device, a card for each reason; what to do first when there is none. Main thread.
class FindingList : public QScrollArea
{
    Q_OBJECT

public:
    explicit FindingList(QWidget* parent = nullptr);

    /// Replaces what shows; the same cards once more change nothing.
    void setCards(const FindingCards& cards);

signals:
    /// The user wants to be given access to the adapters.
    void accessOrdered();

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void fill();
    void fillWhenSeen();
    QWidget* makeCard(const FindingCard& card);
    QWidget* makeCommands(const QStringList& commands);
    QWidget* makeWelcome();

    FindingCards m_cards;
    bool m_isFilled = false; ///< with what there is to tell now
};
