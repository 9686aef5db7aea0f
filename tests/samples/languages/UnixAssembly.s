# Adds two numbers.
/* The arguments are
   in registers. */
        .text
        .globl  add2
        .type   add2, @function
add2:
        pushq   %rbp
        movq    %rsp, %rbp
        leaq    (%rdi,%rsi), %rax   # the sum
        cmpq    $0x10, %rax
        jne     1f
        xorl    %eax, %eax
1:      popq    %rbp
        ret                         // done
        .section .rodata
        .asciz  "sum \"%d\"\n"
        .cfi_remember_state
        ldrh    w5, [x19, x20]
        adds    r4, r5, r12
        tbnz    w9, 3, 1f
        movsd   %xmm9, %xmm15
        movl    %r9d, %r8d
        cqto
        endbr64
        .subsection 1
