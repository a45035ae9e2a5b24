/* The version of these headers, and of the build that they are part of. */
#ifndef VISTREL_VERSION_H
#define VISTREL_VERSION_H

/* Parts of the version: the minor one grows with additions, the major one when the interface of
   binaries changes. */
#define VISTREL_VERSION_MAJOR 1
#define VISTREL_VERSION_MINOR 0
#define VISTREL_VERSION_PATCH 0

/* One number, for comparisons: 10203 is version 1.2.3. */
#define VISTREL_VERSION \
  (10000 * VISTREL_VERSION_MAJOR + 100 * VISTREL_VERSION_MINOR + VISTREL_VERSION_PATCH)

#endif
