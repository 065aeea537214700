// Where the stub helpers of mapped code end: they have pushed the place of what to bind, and a word
// of their image's that stands for the image.
#include "tests/bundle/ArgumentRegisters.inc"

    .text
    .globl tvdelayBindAtFirstUse
    .type tvdelayBindAtFirstUse, @function
tvdelayBindAtFirstUse:
    .cfi_startproc
    KEEP_ARGUMENTS
    movq 8(%rbp), %rdi
    movq 16(%rbp), %rsi
    call tvdelayTargetOfFirstUse@PLT
    movq %rax, %r11
    RESTORE_ARGUMENTS
    addq $16, %rsp
    jmp *%r11
    .cfi_endproc
    .size tvdelayBindAtFirstUse, . - tvdelayBindAtFirstUse

    .section .note.GNU-stack, "", @progbits
