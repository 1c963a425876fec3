#include "common.h"

#define LINE_SIZE 12

static char line[LINE_SIZE + 1];
static unsigned char length;
static unsigned char at;                /* where monitor_number goes on */
static const __code struct command *table;

unsigned int monitor_number(unsigned char base)
{
    unsigned int number = 0;
    unsigned char digit;

    while (line[at] == ' ')
        at++;
    while (line[at] && line[at] != ' ') {
        digit = line[at++];
        digit -= digit >= 'A' ? 'A' - 10 : '0';
        number = number * base + digit;
    }
    return number;
}

void monitor_help(void)
{
    const __code struct command *c;

    for (c = table; c->letter; c++) {
        uart_char(c->letter);
        uart_text(c->help);
        uart_newline();
    }
}

void monitor_dump(void)
{
    unsigned int address = monitor_number(16);
    unsigned char i;

    for (i = 0; i < 64; i++) {
        if (!(i & 15)) {
            uart_newline();
            uart_hex(address >> 8);
            uart_hex(address & 0xFF);
            uart_char(':');
        }
        uart_char(' ');
        uart_hex(*(const __code unsigned char *)address++);
    }
    uart_newline();
}

static void run_line(void)
{
    const __code struct command *c;

    uart_newline();
    line[length] = 0;
    if (length) {
        at = 1;
        for (c = table; c->letter && c->letter != line[0]; c++)
            ;
        if (c->letter)
            c->run();
        else
            uart_text("? H helps\r\n");
    }
    length = 0;
    uart_text("> ");
}

void monitor_poll(const __code struct command *commands)
{
    char c = uart_poll();

    table = commands;
    if (c == '\r') {
        run_line();
    } else if (c == '\b' && length) {
        length--;
        uart_text("\b \b");
    } else if (c >= ' ' && length < LINE_SIZE) {
        if (c >= 'a' && c <= 'z')
            c -= 'a' - 'A';
        line[length++] = c;
        uart_char(c);
    }
}
