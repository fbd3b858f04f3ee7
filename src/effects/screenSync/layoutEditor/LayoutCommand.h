#pragma once

#include "effects/screenSync/LedMap.h"

#include <QUndoCommand>
#include <functional>
#include <utility>

/// One step of the user's in the layout editor, done already when it is pushed.
class LayoutCommand : public QUndoCommand
{
public:
    using Apply = std::function<void(const LedMap&)>;

    LayoutCommand(LedMap before, LedMap after, Apply apply)
        : m_before(std::move(before))
        , m_after(std::move(after))
        , m_apply(std::move(apply))
    {
    }

    void undo() override
    {
        m_isDone = false;
        m_apply(m_before);
    }
    void redo() override
    {
        if (!m_isDone)
            m_apply(m_after);
        m_isDone = true;
    }

private:
    LedMap m_before;
    LedMap m_after;
    Apply m_apply;
    bool m_isDone = true;
};
