/* Display controller, bank 1: finds out the video mode, sets the scaler, keys
   and menu, and a command line on the serial port for service.

   P1.0-P1.3 keys, low = down     P1.7 bank select     P3.4 lamp in the power key
   Crystal 11.0592 MHz. The scaler is on the external bus, see panel.h. */
#include <8051.h>
#include "common.h"
#include "panel.h"

#define LAMP            P3_4

#define KEY_POWER       0x01
#define KEY_MENU        0x02
#define KEY_MINUS       0x04
#define KEY_PLUS        0x08

#define OUTPUT_OFF      0x00
#define OUTPUT_ON       0x03

/* In ticks of 10 ms. */
#define CHECK_TICKS     20              /* the signal is measured this often */
#define OSD_TICKS       600             /* menu and notes disappear */

#define LINE_CLOCK_KHZ  12000ul         /* unit of REG_LINE */
#define LINES_TOLERANCE 2
#define HZ_TOLERANCE    2

enum state { OFF, SEARCH, RUN };

struct mode {
    unsigned int width, height;         /* dots */
    unsigned int lines;                 /* per frame, with the blank ones */
    unsigned char hz;                   /* frames per second */
    unsigned int left;                  /* dots between sync and picture */
    unsigned char top;                  /* lines between sync and picture */
};

static const __code struct mode modes[] = {
    {  720,  400,  449, 70, 162, 37 }, {  640,  480,  525, 60, 144, 35 },
    {  640,  480,  520, 72, 168, 31 }, {  640,  480,  500, 75, 184, 19 },
    {  800,  600,  625, 56, 200, 24 }, {  800,  600,  628, 60, 216, 27 },
    {  800,  600,  666, 72, 184, 29 }, {  800,  600,  625, 75, 240, 24 },
    { 1024,  768,  806, 60, 296, 35 }, { 1024,  768,  806, 70, 280, 35 },
    { 1024,  768,  800, 75, 272, 31 }, { 1152,  864,  900, 75, 384, 35 },
    { 1280,  960, 1000, 60, 424, 39 }, { 1280, 1024, 1066, 60, 360, 41 },
    { 1280, 1024, 1066, 75, 392, 41 },
};
#define MODES       (sizeof modes / sizeof modes[0])
#define NO_MODE     0xFF

static const __code struct {
    unsigned char limit, first;
} items[ITEMS] = {
    { 100, 80 }, { 100, 50 },                           /* brightness, contrast */
    { 255, 128 }, { 255, 128 }, { 255, 128 },           /* red, green, blue */
    { 100, 50 }, { 100, 50 }, { 31, 16 },               /* position, phase */
    { GAMMAS - 1, 0 }, { LANGUAGES - 1, 0 },
};

static const __code char state_names[][7] = { "off", "search", "run" };

static enum state state;
static unsigned char mode;              /* index in `modes`, or NO_MODE */
static unsigned char hz;                /* as measured; 0 without a signal */
static unsigned int lines;
static unsigned char settings[ITEMS];
static unsigned char item, menu_open;
static unsigned int osd_left;           /* ticks until the OSD disappears */

static void scaler_write(unsigned char number, unsigned char value)
{
    scaler_register = number;
    scaler_value = value;
}

static void scaler_write_pair(unsigned char number, unsigned int value)
{
    scaler_write(number, value >> 8);
    scaler_write(number + 1, value & 0xFF);
}

static unsigned char scaler_read(unsigned char number)
{
    scaler_register = number;
    return scaler_value;
}

static unsigned int scaler_read_pair(unsigned char number)
{
    unsigned int high = scaler_read(number);

    return high << 8 | scaler_read(number + 1);
}

static void osd(unsigned char service)
{
    mailbox.language = settings[ITEM_LANGUAGE];
    gate_call(service);
    osd_left = OSD_TICKS;
}

static void osd_hide(void)
{
    gate_call(OSD_HIDE);
    osd_left = 0;
    menu_open = 0;
}

static void show_note(unsigned char number)
{
    menu_open = 0;
    mailbox.item = number;
    osd(OSD_NOTE);
}

static void show_menu(void)
{
    menu_open = 1;
    mailbox.item = item;
    mailbox.value = settings[item];
    mailbox.limit = items[item].limit;
    osd(OSD_MENU);
}

static void apply(unsigned char number)
{
    if (number < ITEM_GAMMA) {
        scaler_write(REG_SETTINGS + number, settings[number]);
    } else if (number == ITEM_GAMMA) {
        mailbox.item = settings[ITEM_GAMMA];
        gate_call(OSD_GAMMA);
    }
}

/* Sets `lines` and `hz`, then looks up the mode. */
static unsigned char find_mode(void)
{
    unsigned int line = scaler_read_pair(REG_LINE);
    unsigned char i;

    hz = 0;
    lines = scaler_read_pair(REG_LINES);
    if (!(scaler_read(REG_STATUS) & 1) || !line || !lines)
        return NO_MODE;
    hz = (LINE_CLOCK_KHZ * 1000 / line + lines / 2) / lines;
    for (i = 0; i < MODES; i++)
        if (modes[i].lines + LINES_TOLERANCE - lines <= 2 * LINES_TOLERANCE
                && (unsigned char)(modes[i].hz + HZ_TOLERANCE - hz) <= 2 * HZ_TOLERANCE)
            return i;
    return NO_MODE;
}

static void set_mode(void)
{
    const __code struct mode *m = &modes[mode];

    scaler_write_pair(REG_SOURCE, m->left);
    scaler_write_pair(REG_SOURCE + 2, m->top);
    scaler_write_pair(REG_SOURCE + 4, m->width);
    scaler_write_pair(REG_SOURCE + 6, m->height);
    mailbox.value = m->width;
    mailbox.limit = m->height;
    mailbox.item = hz;
    menu_open = 0;
    osd(OSD_MODE);
}

static void enter(enum state next)
{
    state = next;
    mode = NO_MODE;
    LAMP = next == OFF;
    scaler_write(REG_OUTPUT, next == OFF ? OUTPUT_OFF : OUTPUT_ON);
    osd_hide();
}

static void check_signal(void)
{
    unsigned char found = find_mode();

    if (!hz) {
        if (state == RUN)
            enter(SEARCH);
        if (state == SEARCH && !osd_left)
            show_note(NOTE_NO_SIGNAL);
        return;
    }
    if (state != RUN)
        enter(RUN);
    if (found == NO_MODE && !osd_left)
        show_note(NOTE_RANGE);
    if (found != mode) {
        mode = found;
        if (mode != NO_MODE)
            set_mode();
    }
}

static void handle_keys(unsigned char pressed)
{
    if (pressed & KEY_POWER) {
        enter(state == OFF ? SEARCH : OFF);
    } else if (state == RUN && pressed & KEY_MENU) {
        if (menu_open)
            item = item == ITEMS - 1 ? 0 : item + 1;
        show_menu();
    } else if (menu_open) {
        if (pressed & KEY_PLUS && settings[item] < items[item].limit)
            settings[item]++;
        if (pressed & KEY_MINUS && settings[item])
            settings[item]--;
        apply(item);
        show_menu();
    }
}

static void each_tick(void)
{
    static unsigned char until_check;

    if (osd_left && !--osd_left)
        osd_hide();
    if (state != OFF && ++until_check >= CHECK_TICKS) {
        until_check = 0;
        check_signal();
    }
}

static void command_status(void)
{
    unsigned char i;

    uart_text("state    ");
    uart_text(state_names[state]);
    uart_text("\r\nlines");
    uart_fixed(lines, 0);
    uart_text("\r\nhz   ");
    uart_fixed(hz, 0);
    if (mode != NO_MODE) {
        uart_text("\r\nmode ");
        uart_fixed(modes[mode].width, 0);
        uart_fixed(modes[mode].height, 0);
    }
    uart_text("\r\nsettings");
    for (i = 0; i < ITEMS; i++)
        uart_fixed(settings[i], 0);
    uart_newline();
}

static const __code struct command commands[] = {
    { 'S', command_status, "       status and settings" },
    { 'D', monitor_dump,   " 1A0   dump code memory of bank 1" },
    { 'H', monitor_help,   "       this list" },
    { 0, 0, 0 },
};

void main(void)
{
    unsigned char i, pressed;

    uart_init();
    tick_init();
    gate_call(OSD_START);
    for (i = 0; i < ITEMS; i++) {
        settings[i] = items[i].first;
        apply(i);
    }
    uart_text("Panel 3.2\r\nH helps\r\n> ");
    enter(SEARCH);
    for (;;) {
        monitor_poll(commands);
        if (!tick_due())
            continue;
        pressed = keys_scan(~P1 & 0x0F, KEY_PLUS | KEY_MINUS);
        if (pressed)
            handle_keys(pressed);
        each_tick();
    }
}
