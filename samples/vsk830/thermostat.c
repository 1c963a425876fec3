/* Room thermostat: one program in one 64 Kbyte flash.

   P0        segments of the display, low = on     P1.0-P1.3  keys, low = down
   P2.0-P2.3 digits of the display, low = on       P3.5       heating relay, low = on
   P3.2-P3.4 serial A/D converter: data, clock, select
   Crystal 11.0592 MHz. Temperatures are in 0.1 degrees Celsius everywhere. */
#include <8051.h>
#include "common.h"

#define VERSION     "Thermostat 1.4\r\n"

#define ADC_DATA    P3_2
#define ADC_CLOCK   P3_3
#define ADC_SELECT  P3_4
#define RELAY       P3_5

#define KEY_UP      0x01
#define KEY_DOWN    0x02
#define KEY_MODE    0x04
#define KEY_SHOW    0x08

/* Timer 0 overflows every 256 counts of 921.6 kHz: 3600 times a second. */
#define OVERFLOWS_PER_STEP  9           /* a step is 2.5 ms and shows one digit */
#define STEPS_PER_SCAN      4           /* keys are scanned every 10 ms */
#define SCANS_PER_SECOND    100

#define DIGITS          4
#define SEGMENT_POINT   0x80
#define BLANK           16              /* index in `segments` */
#define MINUS           17
#define DEGREE          18

#define TARGET_MIN      50              /* 5.0 degrees also keeps the pipes from freezing */
#define TARGET_MAX      300
#define TARGET_STEP     5
#define HYSTERESIS      3
#define HISTORY_MAX     1000            /* hotter, also FAULT: not a room */
#define REST_SECONDS    90              /* the relay stays as it is for at least this long */

#define FAULT           0x7FFF          /* "temperature" of a broken or shorted sensor */

enum show { SHOW_ROOM, SHOW_TARGET, SHOW_CLOCK };

/* Segments a to g in bits 0 to 6. */
static const __code unsigned char segments[] = {
    0x3F, 0x06, 0x5B, 0x4F, 0x66, 0x6D, 0x7D, 0x07,     /* 0-7 */
    0x7F, 0x6F, 0x77, 0x7C, 0x39, 0x5E, 0x79, 0x71,     /* 8-9, A-F */
    0x00, 0x40, 0x63,                                   /* blank, minus, degree */
};

/* 10 kOhm NTC (B = 3950 K) against 10 kOhm: one value for every 32 steps of the
   10-bit converter. Both ends belong to a broken sensor. */
static const __code int ntc[33] = {
    FAULT, 1293, 1016, 866, 763, 685, 621, 567, 520, 477, 439,
    403, 370, 338, 308, 278, 250, 222, 194, 167, 139, 111,
    83, 53, 22, -11, -47, -87, -132, -186, -256, -364, FAULT,
};

/* Target of every hour in half degrees. */
static const __code unsigned char program[24] = {
    32, 32, 32, 32, 32, 36, 41, 42, 40, 34, 34, 34,
    34, 34, 34, 36, 40, 42, 42, 42, 42, 42, 38, 34,
};

static volatile unsigned char picture[DIGITS];          /* what the interrupt shows, left first */
static volatile unsigned char scans_due;
static unsigned char second, minute, hour;
static unsigned char manual;            /* 1 = `target` does not follow the program */
static enum show show;
static int room, target = 200;
static unsigned char rest;                              /* seconds left */
static __idata unsigned char history[24];               /* half degrees, one per hour; 0 = none */

void timer0_interrupt(void) __interrupt(1)
{
    static unsigned char overflows, step, digit;

    if (++overflows < OVERFLOWS_PER_STEP)
        return;
    overflows = 0;
    P2 |= 0x0F;                         /* dark while the segments change */
    P0 = ~picture[digit];
    P2 &= ~(1 << digit);
    digit = (digit + 1) & (DIGITS - 1);
    if (++step == STEPS_PER_SCAN) {
        step = 0;
        scans_due++;
    }
}

static unsigned int adc_read(void)
{
    unsigned int value = 0;
    unsigned char i;

    ADC_CLOCK = 0;
    ADC_SELECT = 0;
    for (i = 0; i < 10; i++) {
        ADC_CLOCK = 1;
        value <<= 1;
        if (ADC_DATA)
            value |= 1;
        ADC_CLOCK = 0;
    }
    ADC_SELECT = 1;
    return value;
}

/* Mean of 16 readings, straight line between two values of the table. */
static int measure(void)
{
    unsigned int sum = 0;
    unsigned char i;
    int low, high;

    for (i = 0; i < 16; i++)
        sum += adc_read();
    i = sum >> 9;
    low = ntc[i];
    high = ntc[i + 1];
    if (low == FAULT || high == FAULT)
        return FAULT;
    return low + (int)((long)(high - low) * (int)(sum & 511) / 512);
}

static void relay(unsigned char on)
{
    if (rest || RELAY == !on)
        return;
    RELAY = !on;
    rest = REST_SECONDS;
}

static void control(void)
{
    if (room == FAULT || room > target + HYSTERESIS)
        relay(0);
    else if (room < target - HYSTERESIS)
        relay(1);
}

static void show_digits(unsigned char a, unsigned char b, unsigned char c, unsigned char d)
{
    picture[0] = segments[a];
    picture[1] = segments[b];
    picture[2] = segments[c];
    picture[3] = segments[d];
}

static void show_temperature(int value)
{
    unsigned char i;
    char c;

    if (value < -99)                    /* three places: -9.9 to 99.9 */
        value = -99;
    else if (value > 999)
        value = 999;
    format_fixed(value, 1);             /* "   21.5" */
    for (i = 0; i < 3; i++) {
        c = format_text[i < 2 ? i + 3 : 6];
        picture[i] = segments[c == ' ' ? BLANK : c == '-' ? MINUS : c - '0'];
    }
    picture[1] |= SEGMENT_POINT;
    picture[3] = segments[DEGREE];
}

static void refresh_display(void)
{
    if (show == SHOW_CLOCK) {
        show_digits(hour / 10, hour % 10, minute / 10, minute % 10);
        if (second & 1)
            picture[1] |= SEGMENT_POINT;
    } else if (show == SHOW_TARGET) {
        show_temperature(target);
    } else if (room == FAULT) {
        show_digits(0xE, MINUS, 0, 1);
    } else {
        show_temperature(room);
    }
    if (!RELAY)
        picture[3] |= SEGMENT_POINT;
}

static void follow_program(void)
{
    if (!manual)
        target = program[hour] * 5;
}

static void each_minute(void)
{
    if (++minute < 60)
        return;
    minute = 0;
    history[hour] = room < 0 || room > HISTORY_MAX ? 0 : room / 5;
    if (++hour == 24)
        hour = 0;
    follow_program();
}

static void each_second(void)
{
    room = measure();
    if (rest)
        rest--;
    if (++second == 60) {
        second = 0;
        each_minute();
    }
    control();
    refresh_display();
}

static void handle_keys(void)
{
    unsigned char pressed = keys_scan(~P1 & 0x0F, KEY_UP | KEY_DOWN);

    if (!pressed)
        return;
    if (pressed & KEY_SHOW)
        show = show == SHOW_CLOCK ? SHOW_ROOM : show + 1;
    if (pressed & KEY_MODE) {
        manual = !manual;
        follow_program();
    }
    if (pressed & (KEY_UP | KEY_DOWN)) {
        show = SHOW_TARGET;
        manual = 1;
        if (pressed & KEY_UP && target < TARGET_MAX)
            target += TARGET_STEP;
        if (pressed & KEY_DOWN && target > TARGET_MIN)
            target -= TARGET_STEP;
    }
    refresh_display();
}

static void refuse(void)
{
    uart_text("out of range\r\n");
}

static void command_status(void)
{
    uart_text("time    ");
    uart_fixed(hour * 100 + minute, 2);
    uart_text(manual ? "\r\nmode    manual" : "\r\nmode    automatic");
    uart_text("\r\nroom    ");
    if (room == FAULT)
        uart_text("sensor fault");
    else
        uart_fixed(room, 1);
    uart_text("\r\ntarget  ");
    uart_fixed(target, 1);
    uart_text(RELAY ? "\r\nrelay   off" : "\r\nrelay   on");
    uart_newline();
}

static void command_target(void)
{
    unsigned int value = monitor_number(10);

    if (value < TARGET_MIN || value > TARGET_MAX) {
        refuse();
        return;
    }
    target = value;
    manual = 1;
}

static void command_clock(void)
{
    unsigned int time = monitor_number(10);

    if (time / 100 > 23 || time % 100 > 59) {
        refuse();
        return;
    }
    hour = time / 100;
    minute = time % 100;
    second = 0;
    follow_program();
}

static void command_automatic(void)
{
    manual = 0;
    follow_program();
}

/* One line per hour: the target and, if there is one, the last measurement. */
static void command_table(void)
{
    unsigned char i;

    for (i = 0; i < 24; i++) {
        uart_fixed(i, 0);
        uart_fixed(program[i] * 5, 1);
        if (history[i])
            uart_fixed(history[i] * 5, 1);
        uart_newline();
    }
}

static const __code struct command commands[] = {
    { 'S', command_status,    "       status" },
    { 'T', command_target,    " 215   target in 0.1 degrees, 50 to 300" },
    { 'A', command_automatic, "       automatic: follow the program" },
    { 'C', command_clock,     " 1830  set the clock" },
    { 'P', command_table,     "       program and history of the day" },
    { 'D', monitor_dump,      " 1A0   dump code memory" },
    { 'H', monitor_help,      "       this list" },
    { 0, 0, 0 },
};

void main(void)
{
    unsigned char scans = 0;

    uart_init();
    TMOD = (TMOD & 0xF0) | 0x02;        /* timer 0: 8 bits, reloads itself with 0 */
    TH0 = 0;
    TR0 = 1;
    ET0 = 1;
    EA = 1;
    uart_text(VERSION "H helps\r\n> ");
    follow_program();
    for (;;) {
        monitor_poll(commands);
        if (!scans_due)
            continue;
        scans_due--;
        handle_keys();
        if (++scans == SCANS_PER_SECOND) {
            scans = 0;
            each_second();
        }
    }
}
