#ifndef ZELK_IPR_EXPORT_H
#define ZELK_IPR_EXPORT_H

#define ZELK_IPR_EXPORT __attribute__((visibility("default")))

#endif
