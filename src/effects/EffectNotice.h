#pragma once

#include <QtGlobal>

/// What a worker tells its user while it cannot show what it was chosen for, such as a screen that is gone.
/// A worker answers the property "notice" with a source text of the translation context "EffectNotice", empty
/// while all is well, and announces a change by effectPropertyChanged. It is a state, no setting: it is not
/// among the properties of the empty key, and nobody sets it.
/// Where the user can do something about it by a click, the property "noticeAction" is the text of a button,
/// of the same context, and empty elsewhere. It is set to true when he clicks, and to false when he comes to
/// see the effect's page: what the effect has to ask him may be asked then.
namespace EffectNotice {

inline constexpr char kKey[] = "notice";
inline constexpr char kActionKey[] = "noticeAction";
inline constexpr char kContext[] = "EffectNotice";

} // namespace EffectNotice
