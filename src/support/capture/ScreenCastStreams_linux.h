#pragma once

#include "support/capture/ScreenCastFeed_linux.h"

class QVariant;

/// The streams in the answer of the portal, as far as they make sense, with names for people. Ids are those
/// of the portal, else made of place or order; they have a prefix of their own, and no two are the same. Main
/// thread, because the toolkit's screens are asked.
ScreenCastStreams screenCastStreams(const QVariant& told);
