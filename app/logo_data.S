/* The packed window logo (made by ludax-logo-pack at build time), kept in read-only data. */
    .section .rdata,"dr"
    .globl ludaxLogoPacked
    .globl ludaxLogoPackedEnd
    .p2align 4
ludaxLogoPacked:
    .incbin LUDAX_LOGO_FILE
ludaxLogoPackedEnd:
