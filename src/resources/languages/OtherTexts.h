// Texts of the catalogues that no source of the program spells. Read by scripts/update-languages.sh alone,
// never compiled.
#include <QtGlobal>

// Names for the effects MusicMode1 to MusicMode4, which a catalogue row may select.
static const char* const effectNames[] = {
    QT_TRANSLATE_NOOP("EffectNames", "音乐模式1"),
    QT_TRANSLATE_NOOP("EffectNames", "音乐模式2"),
    QT_TRANSLATE_NOOP("EffectNames", "音乐模式3"),
    QT_TRANSLATE_NOOP("EffectNames", "音乐模式4"),
};

// Names of the hotkey actions.
static const char* const hotkeyDescriptions[] = {
    QT_TRANSLATE_NOOP("HotkeyDescription", "全开全关切换"),
    QT_TRANSLATE_NOOP("HotkeyDescription", "切换到下一个模式"),
    QT_TRANSLATE_NOOP("HotkeyDescription", "切换到上一个模式"),
    QT_TRANSLATE_NOOP("HotkeyDescription", "降低亮度"),
    QT_TRANSLATE_NOOP("HotkeyDescription", "提升亮度"),
};

// What the toolkit itself shows in this program: buttons of message boxes, menus of text fields and scroll
// bars, the colour dialog. These sources are English.
static const char* const toolkitTexts[] = {
    QT_TRANSLATE_NOOP("QPlatformTheme", "OK"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Cancel"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Close"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "&Yes"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "&No"),
    QT_TRANSLATE_NOOP("QGnomeTheme", "&OK"),
    QT_TRANSLATE_NOOP("QGnomeTheme", "&Cancel"),
    QT_TRANSLATE_NOOP("QGnomeTheme", "&Close"),
    QT_TRANSLATE_NOOP("QLineEdit", "&Undo"),
    QT_TRANSLATE_NOOP("QLineEdit", "&Redo"),
    QT_TRANSLATE_NOOP("QLineEdit", "Cu&t"),
    QT_TRANSLATE_NOOP("QLineEdit", "&Copy"),
    QT_TRANSLATE_NOOP("QLineEdit", "&Paste"),
    QT_TRANSLATE_NOOP("QLineEdit", "Delete"),
    QT_TRANSLATE_NOOP("QLineEdit", "Select All"),
    QT_TRANSLATE_NOOP("QWidgetTextControl", "&Undo"),
    QT_TRANSLATE_NOOP("QWidgetTextControl", "&Redo"),
    QT_TRANSLATE_NOOP("QWidgetTextControl", "Cu&t"),
    QT_TRANSLATE_NOOP("QWidgetTextControl", "&Copy"),
    QT_TRANSLATE_NOOP("QWidgetTextControl", "Copy &Link Location"),
    QT_TRANSLATE_NOOP("QWidgetTextControl", "&Paste"),
    QT_TRANSLATE_NOOP("QWidgetTextControl", "Delete"),
    QT_TRANSLATE_NOOP("QWidgetTextControl", "Select All"),
    QT_TRANSLATE_NOOP("QAbstractSpinBox", "&Select All"),
    QT_TRANSLATE_NOOP("QAbstractSpinBox", "&Step up"),
    QT_TRANSLATE_NOOP("QAbstractSpinBox", "Step &down"),
    QT_TRANSLATE_NOOP("QScrollBar", "Scroll here"),
    QT_TRANSLATE_NOOP("QScrollBar", "Left edge"),
    QT_TRANSLATE_NOOP("QScrollBar", "Top"),
    QT_TRANSLATE_NOOP("QScrollBar", "Right edge"),
    QT_TRANSLATE_NOOP("QScrollBar", "Bottom"),
    QT_TRANSLATE_NOOP("QScrollBar", "Page left"),
    QT_TRANSLATE_NOOP("QScrollBar", "Page up"),
    QT_TRANSLATE_NOOP("QScrollBar", "Page right"),
    QT_TRANSLATE_NOOP("QScrollBar", "Page down"),
    QT_TRANSLATE_NOOP("QScrollBar", "Scroll left"),
    QT_TRANSLATE_NOOP("QScrollBar", "Scroll up"),
    QT_TRANSLATE_NOOP("QScrollBar", "Scroll right"),
    QT_TRANSLATE_NOOP("QScrollBar", "Scroll down"),
    QT_TRANSLATE_NOOP("QColorDialog", "&Basic colors"),
    QT_TRANSLATE_NOOP("QColorDialog", "&Pick Screen Color"),
    QT_TRANSLATE_NOOP("QColorDialog", "Cursor at %1, %2\nPress ESC to cancel"),
    QT_TRANSLATE_NOOP("QColorDialog", "&Custom colors"),
    QT_TRANSLATE_NOOP("QColorDialog", "&Add to Custom Colors"),
    QT_TRANSLATE_NOOP("QColorDialog", "Hu&e:"),
    QT_TRANSLATE_NOOP("QColorDialog", "&Sat:"),
    QT_TRANSLATE_NOOP("QColorDialog", "&Val:"),
    QT_TRANSLATE_NOOP("QColorDialog", "&Red:"),
    QT_TRANSLATE_NOOP("QColorDialog", "&Green:"),
    QT_TRANSLATE_NOOP("QColorDialog", "Bl&ue:"),
    QT_TRANSLATE_NOOP("QColorDialog", "A&lpha channel:"),
    QT_TRANSLATE_NOOP("QColorDialog", "&HTML:"),
};
