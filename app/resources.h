#ifndef LUDAX_RESOURCES_H
#define LUDAX_RESOURCES_H
/* What the resource script (ludax.rc) and the program share. Plain preprocessor lines only:
   the resource compiler reads this file too. */

/* The program's version: the label "GUI v.1.02" painted on the logo and the version resource
   that Explorer shows under Properties, Details. Change it here, and only here. */
#define LUDAX_VERSION_MAJOR 1
#define LUDAX_VERSION_MINOR 2

#define LUDAX_STRINGIZE_(x) #x
#define LUDAX_STRINGIZE(x) LUDAX_STRINGIZE_(x)
/* As people read it: the minor number in two digits, "1.02". */
#if LUDAX_VERSION_MINOR < 10
#define LUDAX_VERSION_TEXT LUDAX_STRINGIZE(LUDAX_VERSION_MAJOR) ".0" LUDAX_STRINGIZE(LUDAX_VERSION_MINOR)
#else
#define LUDAX_VERSION_TEXT LUDAX_STRINGIZE(LUDAX_VERSION_MAJOR) "." LUDAX_STRINGIZE(LUDAX_VERSION_MINOR)
#endif
#define LUDAX_VERSION_LABEL "GUI v." LUDAX_VERSION_TEXT

#define LUDAX_PRODUCT_NAME "Ludax config."

/* Resource ids. The icon has the lowest id, so Explorer shows it for the file. */
#define LUDAX_ICON 1
#define LUDAX_LOGO 2

#endif
