#include <8051.h>
#include "common.h"

/* Timer 1 clocks the port: 11.0592 MHz / 12 / 32 / 9600 baud = 3 counts. */
#define BAUD_COUNTS 3

void uart_init(void)
{
    SCON = 0x50;                        /* 8 bits, receiver on */
    TMOD = (TMOD & 0x0F) | 0x20;        /* timer 1 reloads itself */
    TH1 = (unsigned char)-BAUD_COUNTS;
    TL1 = (unsigned char)-BAUD_COUNTS;
    TR1 = 1;
    TI = 1;                             /* "sent": the first uart_char must not wait */
}

char uart_poll(void)
{
    if (!RI)
        return 0;
    RI = 0;
    return SBUF & 0x7F;
}

void uart_char(char c)
{
    while (!TI)
        ;
    TI = 0;
    SBUF = c;
}

void uart_text(const __code char *text)
{
    while (*text)
        uart_char(*text++);
}

void uart_fixed(int value, unsigned char places)
{
    unsigned char i;

    format_fixed(value, places);
    for (i = 0; i < FORMAT_WIDTH; i++)
        uart_char(format_text[i]);
}

static void hex_digit(unsigned char digit)
{
    uart_char(digit < 10 ? '0' + digit : 'A' - 10 + digit);
}

void uart_hex(unsigned char value)
{
    hex_digit(value >> 4);
    hex_digit(value & 0x0F);
}

void uart_newline(void)
{
    uart_char('\r');
    uart_char('\n');
}
