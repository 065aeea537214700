// What the mapped code calls to send messages: the receiver's method is looked up in this process's
// runtime, and jumped to with the arguments as they are.
#include "tests/bundle/ArgumentRegisters.inc"

.macro ENTRY name
    .globl \name
    .type \name, @function
\name:
    .cfi_startproc
.endm

.macro END name
    .cfi_endproc
    .size \name, . - \name
.endm

// The method into r11.
.macro LOOK_UP function
    call \function@PLT
    movq %rax, %r11
    RESTORE_ARGUMENTS
.endm

    .text

ENTRY tvdelayMessageSend
    testq %rdi, %rdi
    jz .Lnil
    KEEP_ARGUMENTS
    LOOK_UP tvdelayMethodFor
    jmp *%r11
.Lnil:
    xorl %eax, %eax
    xorl %edx, %edx
    xorps %xmm0, %xmm0
    xorps %xmm1, %xmm1
    ret
END tvdelayMessageSend

// The address for the result comes first.
ENTRY tvdelayMessageSendStret
    testq %rsi, %rsi
    jz .LnilStret
    KEEP_ARGUMENTS
    movq %rsi, %rdi
    movq %rdx, %rsi
    LOOK_UP tvdelayMethodFor
    jmp *%r11
.LnilStret:
    movq %rdi, %rax
    ret
END tvdelayMessageSendStret

// In the receiver's place comes a pair of receiver and class.
ENTRY tvdelayMessageSendSuper
    KEEP_ARGUMENTS
    LOOK_UP tvdelayMethodForSuper
    movq (%rdi), %rdi
    jmp *%r11
END tvdelayMessageSendSuper

    .section .note.GNU-stack, "", @progbits
