/* Display controller, bank 2: on-screen display with its texts, and gamma curves. */
#include "common.h"
#include "panel.h"

#define ROWS            8
#define COLUMNS         28
#define CHARACTER_ROWS  16              /* of 8 dots, one byte each */
#define TEXT_MEMORY     0x0000          /* ROWS x COLUMNS bytes */
#define DOT_MEMORY      0x1000          /* CHARACTER_ROWS bytes per character */
#define SLIDER_CELLS    24

/* Characters behind the ones of the font. */
#define CELL_EMPTY      (FONT_LAST + 1)
#define CELL_FULL       (FONT_LAST + 2)

/* Titles fill at most one row. */
static const __code char *const __code titles[ITEMS][LANGUAGES] = {
    { "BRIGHTNESS",          "HELLIGKEIT",           "LUMINOSITE" },
    { "CONTRAST",            "KONTRAST",             "CONTRASTE" },
    { "RED",                 "ROT",                  "ROUGE" },
    { "GREEN",               "GRUEN",                "VERT" },
    { "BLUE",                "BLAU",                 "BLEU" },
    { "HORIZONTAL POSITION", "HORIZONTALE LAGE",     "POSITION HORIZONTALE" },
    { "VERTICAL POSITION",   "VERTIKALE LAGE",       "POSITION VERTICALE" },
    { "PHASE",               "PHASENLAGE",           "PHASE" },
    { "GAMMA CURVE",         "GAMMAKURVE",           "COURBE GAMMA" },
    { "LANGUAGE: ENGLISH",   "SPRACHE: DEUTSCH",     "LANGUE: FRANCAIS" },
};

static const __code char *const __code notes[NOTES][LANGUAGES] = {
    { "NO SIGNAL",           "KEIN SIGNAL",          "PAS DE SIGNAL" },
    { "MODE NOT SUPPORTED",  "MODUS UNBEKANNT",      "MODE INCONNU" },
};

static const __code char *const __code hints[LANGUAGES] = {
    "MENU: NEXT   +/-: CHANGE",
    "MENU: WEITER +/-: AENDERN",
    "MENU: SUIVANT +/-: CHANGER",
};

/* Output for every eighth input value: exponents 1.0, 1/2.2 and 2.2. */
static const __code unsigned char gamma[GAMMAS][33] = {
    {   0,   8,  16,  24,  32,  40,  48,  56,  64,  72,  80,
       88,  96, 104, 112, 120, 128, 136, 144, 152, 160, 168,
      176, 184, 192, 200, 208, 216, 224, 232, 240, 248, 255 },
    {   0,  53,  72,  87,  99, 110, 119, 128, 136, 143, 150,
      157, 163, 169, 175, 181, 186, 191, 196, 201, 206, 211,
      215, 219, 224, 228, 232, 236, 240, 244, 248, 251, 255 },
    {   0,   0,   1,   1,   3,   4,   6,   9,  12,  16,  20,
       24,  29,  35,  41,  48,  55,  63,  72,  81,  91, 101,
      112, 123, 135, 148, 161, 175, 190, 205, 221, 238, 255 },
};

static void write(unsigned char number, unsigned char value)
{
    scaler_register = number;
    scaler_value = value;
}

static void data_start(unsigned int address)
{
    write(REG_OSD_HIGH, address >> 8);
    write(REG_OSD_LOW, address & 0xFF);
}

static void cells(unsigned char c, unsigned char count)
{
    while (count--)
        write(REG_OSD_DATA, c);
}

static void text_start(unsigned char row, unsigned char column)
{
    data_start(TEXT_MEMORY + row * COLUMNS + column);
}

static void text(const __code char *t)
{
    while (*t)
        write(REG_OSD_DATA, *t++);
}

static void number(int value)
{
    unsigned char i;

    format_fixed(value, 0);
    for (i = 0; i < FORMAT_WIDTH; i++)
        if (format_text[i] != ' ')
            write(REG_OSD_DATA, format_text[i]);
}

static void clear(void)
{
    write(REG_OSD_CONTROL, 0);
    text_start(0, 0);
    cells(' ', ROWS * COLUMNS);
}

/* Every row of the font becomes two, with a blank one above and below. */
static void osd_start(void)
{
    unsigned char c, row, column, dots;

    data_start(DOT_MEMORY + FONT_FIRST * CHARACTER_ROWS);
    for (c = 0; c <= FONT_LAST - FONT_FIRST; c++) {
        write(REG_OSD_DATA, 0);
        for (row = 1; row != 0x80; row <<= 1) {
            dots = 0;
            for (column = 0; column < FONT_COLUMNS; column++) {
                dots <<= 1;
                if (font[c][column] & row)
                    dots |= 0x02;
            }
            cells(dots, 2);
        }
        write(REG_OSD_DATA, 0);
    }
    cells(0x00, 3);                     /* CELL_EMPTY: a thin line */
    cells(0xFF, 1);
    cells(0x00, 8);
    cells(0xFF, 1);
    cells(0x00, 3);
    cells(0x00, 3);                     /* CELL_FULL */
    cells(0xFF, 10);
    cells(0x00, 3);
    clear();
}

static void osd_hide(void)
{
    write(REG_OSD_CONTROL, 0);
}

static void osd_menu(void)
{
    unsigned char full = (unsigned int)(mailbox.value * SLIDER_CELLS) / mailbox.limit;

    clear();
    text_start(1, 2);
    text(titles[mailbox.item][mailbox.language]);
    text_start(3, 2);
    cells(CELL_FULL, full);
    cells(CELL_EMPTY, SLIDER_CELLS - full);
    text_start(4, 2);
    number(mailbox.value);
    text_start(6, 1);
    text(hints[mailbox.language]);
    write(REG_OSD_CONTROL, 1);          /* visible */
}

static void osd_note(void)
{
    clear();
    text_start(3, 5);
    text(notes[mailbox.item][mailbox.language]);
    write(REG_OSD_CONTROL, 1);          /* visible */
}

static void osd_mode(void)
{
    clear();
    text_start(3, 5);
    number(mailbox.value);
    text(" X ");
    number(mailbox.limit);
    text_start(4, 5);
    number(mailbox.item);
    text(" HZ");
    write(REG_OSD_CONTROL, 1);          /* visible */
}

/* Straight lines between the values of the table, which never fall. */
static void osd_gamma(void)
{
    const __code unsigned char *g = gamma[mailbox.item];
    unsigned char i, step;

    write(REG_GAMMA_START, 0);
    for (i = 0; i < 32; i++, g++)
        for (step = 0; step < 8; step++)
            write(REG_GAMMA, g[0] + ((unsigned char)(g[1] - g[0]) * step >> 3));
}

/* Only runs when a disturbance starts the processor in this bank. */
void main(void)
{
    gate_restart();
}

/* In the order of enum service. */
SERVICE_TABLE services[] = {
    osd_start, osd_hide, osd_menu, osd_note, osd_mode, osd_gamma,
};
