/* Routines that the samples share. Crystal 11.0592 MHz, no interrupts needed. */
#ifndef COMMON_H
#define COMMON_H

/* uart.c: serial port, 9600 baud, 8 data bits, no parity. */
void uart_init(void);
char uart_poll(void);                   /* next character, or 0 when there is none */
void uart_char(char c);
void uart_text(const __code char *text);
void uart_fixed(int value, unsigned char places);   /* number, see format_fixed */
void uart_hex(unsigned char value);                 /* always two digits */
void uart_newline(void);

/* format.c: writes `value`, right-aligned, into format_text. `places` (0-4) digits
   stand behind the decimal point: format_fixed(-45, 1) gives "   -4.5". */
#define FORMAT_WIDTH 7                  /* fits "-3276.8" */
extern __data char format_text[FORMAT_WIDTH + 1];
void format_fixed(int value, unsigned char places);

/* keys.c: call every 10 ms with one bit per key, 1 = down. Returns the keys that
   were pressed just now; a key that stays down comes again and again when its bit
   is set in `repeating`. */
unsigned char keys_scan(unsigned char down, unsigned char repeating);

/* tick.c: time base without interrupts; tick_due is 1 once every 10 ms. */
void tick_init(void);
unsigned char tick_due(void);

/* monitor.c: command line on the serial port, one letter and up to two numbers. */
struct command {
    char letter;                        /* upper case; 0 ends the table */
    void (*run)(void);
    const __code char *help;
};
void monitor_poll(const __code struct command *commands);
void monitor_help(void);                /* command: lists the table */
void monitor_dump(void);                /* command: shows 64 bytes of code memory */

/* For a running command: the next number of the line, 0 when there is none.
   Reads decimal or, if `base` is 16, hexadecimal digits. */
unsigned int monitor_number(unsigned char base);

/* font.c: characters 5 dots wide and 7 high, one byte per column, lowest bit on top. */
#define FONT_COLUMNS 5
#define FONT_FIRST   0x20               /* space */
#define FONT_LAST    0x5F               /* underline; there are no small letters */
extern const __code unsigned char font[FONT_LAST - FONT_FIRST + 1][FONT_COLUMNS];

#endif
