#pragma once

#include <QMetaType>
#include <QVector>

/// The class of a worker or an option widget, known to the meta-type system under its name followed by "*".
struct EffectClass
{
    const char* name = ""; ///< empty for none
    const QMetaObject* meta = nullptr;

    template <typename Class>
    static EffectClass of()
    {
        qRegisterMetaType<Class*>();
        return {Class::staticMetaObject.className(), &Class::staticMetaObject};
    }
};

/// One built-in effect; an extra one is offered only while the product or the user asks for those.
struct EffectRow
{
    const char* id;
    const char* name; ///< UTF-8, source text in the translation context "EffectNames"
    int order;        ///< place within the group
    EffectClass worker;
    EffectClass sOptWidget;         ///< short option widget
    EffectClass advancedLOptWidget; ///< long option widget, offered in advanced mode only
    const char* icon;               ///< resource path, empty for none
    bool isExtra = false;
};

/// All built-in effects, in the order of registration. The first call registers their classes.
const QVector<EffectRow>& effectCatalogue();
