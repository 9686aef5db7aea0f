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
%rep 4
        lock cmpxchg16b [rdi]
        cmovae eax, r8d
        movss xmm9, [rsi]
        cvttsd2si r9, xmm15
        vmovups ymm10, [rip + total]
        fld qword [rsp] ; x87
        fstp st1
        setae r10b
        mov cr3, rax
        jnbe .again
        retf
%endrep
use16
