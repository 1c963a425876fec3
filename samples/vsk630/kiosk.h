/* What the two banks of the ticket kiosk share. */
#ifndef KIOSK_H
#define KIOSK_H

#include "gate.h"

/* Services of bank 1, in the order of its table. Behind each: what it reads
   from the mailbox. Rows are 0 (top) to 3, columns of text 0 to 20. */
enum service {
    DISPLAY_START,
    DISPLAY_CLEAR,
    DISPLAY_MESSAGE,                    /* row, item = enum message, language */
    DISPLAY_AMOUNT,                     /* row, column, value in cents */
    DISPLAY_BAR,                        /* row, value, limit: value of limit is filled */
    DISPLAY_WAVE,                       /* row, item = phase: screen saver */
};

enum message {
    MSG_WELCOME, MSG_PRESS_KEY, MSG_CHOOSE, MSG_SINGLE, MSG_RETURN, MSG_DAY,
    MSG_WEEK, MSG_PRICE, MSG_PAID, MSG_INSERT, MSG_PRINTING, MSG_TAKE,
    MSG_CANCELLED, MESSAGES
};

#define TICKETS 4                       /* MSG_SINGLE and the three behind it */

#endif
