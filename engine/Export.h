#pragma once

// What the engine libraries show to the module.
#define DRAV_EXPORT __attribute__((visibility("default")))
