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
