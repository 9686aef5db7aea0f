; Writes a line.
section .data
text:   db "Hello \x", 0Ah
length  equ $ - text
%define STDOUT 1

        global _start
section .text
_start:
        mov     rax, 1          ; write
        mov     rdi, STDOUT
        lea     rsi, [rel text]
        MOV     EDX, 0x0D
        syscall
        xor     edi, edi
        cmp     al, 'a'
        jne     .done
.done:  ret
