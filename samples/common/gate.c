#include <8051.h>
#include "gate.h"

__data __at (0x08) struct mailbox mailbox;

/* make-samples links this segment to 0x0100 in both banks. It must not contain
   anything that depends on the bank: the bytes have to be the same. */
#pragma codeseg GATE

void gate_call(unsigned char service) __naked
{
    (void)service;                      /* is in DPL */
    __asm
        clr  _P1_7                      ; from here on the service bank runs
        lcall 00001$
        setb _P1_7                      ; and from here on the main bank again
        ret
    00001$:                             ; pushes the address of the service, "returns" to it
        mov  a, dpl
        rl   a
        mov  b, a
        mov  dptr, #0x0120
        movc a, @a+dptr
        push acc
        mov  a, b
        inc  dptr
        movc a, @a+dptr
        push acc
        ret
    __endasm;
}

void gate_restart(void) __naked
{
    __asm
        setb _P1_7
        ljmp 0x0000
    __endasm;
}
