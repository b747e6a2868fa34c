#ifndef ENGINE_EXPORT_H
#define ENGINE_EXPORT_H

// What the engine libraries show to the module.
#define DRAV_EXPORT __attribute__((visibility("default")))

#endif
