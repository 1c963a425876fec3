/* What the two banks of the display controller share. */
#ifndef PANEL_H
#define PANEL_H

#include "gate.h"

/* Services of bank 2, in the order of its table. Behind each: what it reads
   from the mailbox. The on-screen display (OSD) has 8 rows of 28 characters. */
enum service {
    OSD_START,                          /* loads the characters */
    OSD_HIDE,
    OSD_MENU,                           /* item = enum item, language, value, limit */
    OSD_NOTE,                           /* item = enum note, language */
    OSD_MODE,                           /* value x limit dots, item = refresh in Hz */
    OSD_GAMMA,                          /* item = 0 (linear) to GAMMAS - 1 */
};

enum item {
    ITEM_BRIGHTNESS, ITEM_CONTRAST, ITEM_RED, ITEM_GREEN, ITEM_BLUE,
    ITEM_LEFT, ITEM_UP, ITEM_PHASE, ITEM_GAMMA, ITEM_LANGUAGE, ITEMS
};

enum note { NOTE_NO_SIGNAL, NOTE_RANGE, NOTES };

#define GAMMAS 3

/* The scaler on the external bus: write the number of a register, then read or
   write its value. A pair is two registers, high byte first. A port takes one
   byte after the other. */
static __xdata __at (0x8000) volatile unsigned char scaler_register;
static __xdata __at (0x8001) volatile unsigned char scaler_value;

#define REG_STATUS          0x00        /* bit 0: signal present */
#define REG_LINE            0x02        /* pair: length of a line in 1/12 us */
#define REG_LINES           0x04        /* pair: lines per frame */
#define REG_OUTPUT          0x10        /* bit 0: panel on, bit 1: backlight on */
#define REG_SOURCE          0x20        /* 4 pairs: left, top, width, height */
#define REG_SETTINGS        0x30        /* one register for each of the first 8 items */
#define REG_GAMMA           0x40        /* port: 256 values, starts again after REG_GAMMA_START */
#define REG_GAMMA_START     0x41
#define REG_OSD_CONTROL     0x50        /* bit 0: visible */
#define REG_OSD_HIGH        0x51        /* address in the OSD memory */
#define REG_OSD_LOW         0x52
#define REG_OSD_DATA        0x53        /* port */

#endif
