#pragma once

/// Makes the built-in workers and option widgets known to the meta-type system, each under its class name
/// followed by "*", so that they can be created by name. May be called again.
void registerEffectTypes();
