#ifndef LUDAX_RESOURCES_H
#define LUDAX_RESOURCES_H
/* What the resource script (ludax.rc) and the program share. Plain preprocessor lines only:
   the resource compiler reads this file too. */

#include "version.h"

/* Resource ids. The icon has the lowest id, so Explorer shows it for the file. */
#define LUDAX_ICON 1
#define LUDAX_LOGO 2

#endif
