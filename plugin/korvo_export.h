// KORVO_EXPORT marks what the module Korvo.tsp shows the host: C linkage, default visibility.
// Everything else in the module is compiled with hidden visibility, so that its classes and
// statics stay its own when the host opens several modules.
#pragma once

#define KORVO_EXPORT extern "C" __attribute__((visibility("default")))
