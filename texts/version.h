#ifndef LUDAX_VERSION_H
#define LUDAX_VERSION_H
/* The program's name and version: the title, the label "GUI v.1.02" painted on the logo, the
   version resource that Explorer shows under Properties, Details, and what a log records. Change
   the version here, and only here. Plain preprocessor lines only: the resource compiler reads
   this file too. */

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

#endif
