#include <8051.h>
#include "common.h"

/* 10 ms at 11.0592 MHz / 12 = 921.6 kHz. */
#define TICK_COUNTS 9216u

static void reload(void)
{
    TH0 = (65536 - TICK_COUNTS) >> 8;
    TL0 = (65536 - TICK_COUNTS) & 0xFF;
    TF0 = 0;
}

void tick_init(void)
{
    TMOD = (TMOD & 0xF0) | 0x01;        /* timer 0 counts 16 bits */
    reload();
    TR0 = 1;
}

unsigned char tick_due(void)
{
    if (!TF0)
        return 0;
    reload();
    return 1;
}
