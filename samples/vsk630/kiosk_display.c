/* Ticket kiosk, bank 1: the graphic display, its texts and its pictures.

   Display of 128 x 32 dots, four rows of 8 dots, one byte per column of a row:
   P2.0 data, P2.1 clock, P2.2 command (low) or dots (high), P2.3 select (low). */
#include <8051.h>
#include "common.h"
#include "kiosk.h"

#define LCD_DATA        P2_0
#define LCD_CLOCK       P2_1
#define LCD_DOTS        P2_2
#define LCD_SELECT      P2_3

#define WIDTH           128
#define ROWS            4
#define CHAR_WIDTH      (FONT_COLUMNS + 1)
#define TEXT_COLUMNS    21
#define SET_ROW         0xB0            /* commands of the display */
#define SET_COLUMN_HIGH 0x10
#define SET_COLUMN_LOW  0x00

static const __code unsigned char start_commands[] = {
    0xAE,                               /* display off */
    0xA1, 0xC8,                         /* mounted upside down: mirror columns and rows */
    0x81, 0x9F,                         /* contrast */
    0x40, 0xA6,                         /* first line 0, not inverted */
    0xAF,                               /* display on */
};

/* All texts fill at most the 21 columns, those before an amount at most 13. */
static const __code char *const __code messages[MESSAGES][LANGUAGES] = {
    { "WELCOME",             "WILLKOMMEN",            "BIENVENUE" },
    { "PRESS ANY KEY",       "BITTE TASTE DRUECKEN",  "APPUYEZ SUR UN BOUTON" },
    { "WHICH TICKET?",       "WELCHE FAHRKARTE?",     "QUEL BILLET?" },
    { "> SINGLE JOURNEY",    "> EINZELFAHRT",         "> ALLER SIMPLE" },
    { "> RETURN JOURNEY",    "> HIN UND ZURUECK",     "> ALLER ET RETOUR" },
    { "> DAY TICKET",        "> TAGESKARTE",          "> BILLET D'UN JOUR" },
    { "> WEEK TICKET",       "> WOCHENKARTE",         "> BILLET D'UNE SEM." },
    { "PRICE",               "PREIS",                 "PRIX" },
    { "PAID",                "BEZAHLT",               "PAYE" },
    { "COINS - NO CHANGE!",  "KEIN WECHSELGELD!",     "PAS DE MONNAIE!" },
    { "PRINTING...",         "DRUCKT...",             "IMPRESSION..." },
    { "TAKE YOUR TICKET",    "BITTE ENTNEHMEN",       "PRENEZ VOTRE BILLET" },
    { "CANCELLED",           "ABGEBROCHEN",           "ANNULE" },
};

/* One period of a wave, as the height (0-7) of the dot in each column. */
static const __code unsigned char wave[32] = {
    4, 4, 5, 5, 6, 6, 6, 7, 7, 7, 6, 6, 6, 5, 5, 4,
    4, 3, 2, 2, 1, 1, 1, 0, 0, 0, 1, 1, 1, 2, 2, 3,
};

static void send(unsigned char value)
{
    unsigned char i;

    LCD_SELECT = 0;
    for (i = 8; i; i--) {
        LCD_CLOCK = 0;
        LCD_DATA = value >> 7;
        LCD_CLOCK = 1;
        value <<= 1;
    }
    LCD_SELECT = 1;
}

/* What is sent next are dots, from column `x` (0-127) of mailbox.row on. */
static void start_at(unsigned char x)
{
    LCD_DOTS = 0;
    send(SET_ROW | mailbox.row);
    send(SET_COLUMN_HIGH | x >> 4);
    send(SET_COLUMN_LOW | (x & 0x0F));
    LCD_DOTS = 1;
}

static void send_char(char c)
{
    unsigned char i;

    if (c < FONT_FIRST || c > FONT_LAST)
        c = '?';
    for (i = 0; i < FONT_COLUMNS; i++)
        send(font[c - FONT_FIRST][i]);
    send(0);
}

static void display_clear(void)
{
    unsigned char x;

    for (mailbox.row = 0; mailbox.row < ROWS; mailbox.row++) {
        start_at(0);
        for (x = WIDTH; x; x--)
            send(0);
    }
}

static void display_start(void)
{
    unsigned char i;

    LCD_DOTS = 0;
    for (i = 0; i < sizeof start_commands; i++)
        send(start_commands[i]);
    display_clear();
}

static void display_message(void)
{
    const __code char *text = messages[mailbox.item][mailbox.language];
    unsigned char left = TEXT_COLUMNS;

    start_at(0);
    for (; *text && left; left--)
        send_char(*text++);
    for (; left; left--)
        send_char(' ');
}

static void display_amount(void)
{
    unsigned char i;

    format_fixed(mailbox.value, 2);
    start_at(mailbox.column * CHAR_WIDTH);
    for (i = 0; i < FORMAT_WIDTH; i++)
        send_char(format_text[i]);
}

static void display_bar(void)
{
    unsigned char x, full = WIDTH;

    if (mailbox.value < mailbox.limit)
        full = (long)WIDTH * mailbox.value / mailbox.limit;
    start_at(0);
    for (x = 0; x < WIDTH; x++)
        send(x < full || x == WIDTH - 1 ? 0x7E : 0x42);
}

static void display_wave(void)
{
    unsigned char x;

    start_at(0);
    for (x = 0; x < WIDTH; x++)
        send(0x80 >> wave[(x + mailbox.item) & 31]);
}

/* Only runs when a disturbance starts the processor in this bank. */
void main(void)
{
    gate_restart();
}

/* In the order of enum service. */
SERVICE_TABLE services[] = {
    display_start, display_clear, display_message, display_amount, display_bar, display_wave,
};
