/* Ticket kiosk, bank 0: sells tickets and answers on the serial port.

   P1.0-P1.3 keys, low = down      P3.2 coin acceptor, one falling edge = 10 cents
   P1.7      bank select           P3.4 printer motor    P3.5 coin return (both low = on)
   Crystal 11.0592 MHz. Amounts are in cents. The display belongs to bank 1.
   Drawing one of its rows takes about 28 ms, and the serial port is polled:
   commands have to be typed, a terminal program that pastes them is too fast. */
#include <8051.h>
#include "common.h"
#include "kiosk.h"

#define PRINTER         P3_4
#define COIN_RETURN     P3_5

#define KEY_NEXT        0x01
#define KEY_BUY         0x02
#define KEY_CANCEL      0x04
#define KEY_LANGUAGE    0x08

#define COIN            10
#define PRICE_MAX       5000

/* In ticks of 10 ms. */
#define MOTOR_TICKS     180             /* the printer feeds one ticket */
#define NOTE_TICKS      300             /* a closing message stays, the coin return is open */
#define PATIENCE        3000            /* without a key or a coin the money goes back */
#define WAVE_TICKS      10

enum state { IDLE, CHOOSE, PAY, PRINT, NOTE };

static const __code unsigned int first_prices[TICKETS] = { 240, 450, 780, 2650 };
static const __code char state_names[][8] = {
    "idle", "choose", "pay", "print", "note",
};

static enum state state;
static unsigned char ticket, language, phase, note;
static int credit;
static unsigned int ticks;              /* since the state began or a coin came in */
static unsigned int prices[TICKETS], sold[TICKETS];

static void message(unsigned char row, unsigned char number)
{
    mailbox.row = row;
    mailbox.item = number;
    mailbox.language = language;
    gate_call(DISPLAY_MESSAGE);
}

static void amount(unsigned char row, unsigned char text, int value)
{
    message(row, text);
    mailbox.column = 13;
    mailbox.value = value;
    gate_call(DISPLAY_AMOUNT);
}

static void show_payment(void)
{
    amount(1, MSG_PRICE, prices[ticket]);
    amount(2, MSG_PAID, credit);
    mailbox.row = 3;
    mailbox.value = credit;
    mailbox.limit = prices[ticket];
    gate_call(DISPLAY_BAR);
}

/* Every state draws its whole display when it begins. */
static void enter(enum state next)
{
    state = next;
    ticks = 0;
    gate_call(DISPLAY_CLEAR);
    switch (next) {
    case IDLE:
        message(0, MSG_WELCOME);
        message(1, MSG_PRESS_KEY);
        break;
    case CHOOSE:
        message(0, MSG_CHOOSE);
        message(1, MSG_SINGLE + ticket);
        amount(2, MSG_PRICE, prices[ticket]);
        break;
    case PAY:
        message(0, MSG_INSERT);
        show_payment();
        break;
    case PRINT:
        message(1, MSG_PRINTING);
        PRINTER = 0;
        break;
    case NOTE:
        message(0, note);
        break;
    }
}

static void finish(unsigned char text)
{
    note = text;
    credit = 0;
    enter(NOTE);
}

static void cancel(void)
{
    COIN_RETURN = 0;                    /* all coins of this sale fall back */
    finish(MSG_CANCELLED);
}

static void handle_keys(unsigned char pressed)
{
    if (pressed & KEY_LANGUAGE && state <= PAY) {
        language = language == LANGUAGES - 1 ? 0 : language + 1;
        enter(state);
    } else if (state == IDLE) {
        enter(CHOOSE);
    } else if (state == CHOOSE || state == PAY) {
        if (pressed & KEY_CANCEL) {
            cancel();
        } else if (pressed & KEY_BUY && state == CHOOSE) {
            enter(PAY);
        } else if (pressed & KEY_NEXT && state == CHOOSE) {
            ticket = (ticket + 1) % TICKETS;
            enter(CHOOSE);
        }
    }
}

/* Coins count only while somebody pays. The machine gives no change. */
static void handle_coin(void)
{
    if (state != PAY)
        return;
    credit += COIN;
    ticks = 0;
    show_payment();
    if (credit >= (int)prices[ticket]) {
        sold[ticket]++;
        enter(PRINT);
    }
}

static void each_tick(void)
{
    ticks++;
    switch (state) {
    case IDLE:
        if (ticks < WAVE_TICKS)
            break;
        ticks = 0;
        mailbox.row = 3;
        mailbox.item = phase++;
        gate_call(DISPLAY_WAVE);
        break;
    case CHOOSE:
    case PAY:
        if (ticks >= PATIENCE)
            cancel();
        break;
    case PRINT:
        if (ticks >= MOTOR_TICKS) {
            PRINTER = 1;
            finish(MSG_TAKE);
        }
        break;
    case NOTE:
        if (ticks >= NOTE_TICKS) {
            COIN_RETURN = 1;
            enter(IDLE);
        }
        break;
    }
}

static void command_status(void)
{
    unsigned char i;

    uart_text("state  ");
    uart_text(state_names[state]);
    uart_text("\r\ncredit ");
    uart_fixed(credit, 2);
    uart_text("\r\nticket  price   sold\r\n");
    for (i = 0; i < TICKETS; i++) {
        uart_char('1' + i);
        uart_fixed(prices[i], 2);
        uart_fixed(sold[i], 0);
        uart_newline();
    }
}

static void command_price(void)
{
    unsigned int number = monitor_number(10) - 1;
    unsigned int price = monitor_number(10);

    if (number >= TICKETS || price == 0 || price > PRICE_MAX || price % COIN || state != IDLE)
        uart_text("refused\r\n");
    else
        prices[number] = price;
}

static const __code struct command commands[] = {
    { 'S', command_status, "         status and sales" },
    { 'P', command_price,  " 1 240   price of ticket 1 to 4 in cents, only while idle" },
    { 'D', monitor_dump,   " 1A0     dump code memory of bank 0" },
    { 'H', monitor_help,   "         this list" },
    { 0, 0, 0 },
};

void main(void)
{
    unsigned char i, pressed;

    for (i = 0; i < TICKETS; i++)
        prices[i] = first_prices[i];
    uart_init();
    tick_init();
    IT0 = 1;                            /* IE0 remembers an edge of the coin acceptor */
    gate_call(DISPLAY_START);
    uart_text("Ticket kiosk 2.0\r\nH helps\r\n> ");
    enter(IDLE);
    for (;;) {
        monitor_poll(commands);
        if (IE0) {
            IE0 = 0;
            handle_coin();
        }
        if (!tick_due())
            continue;
        pressed = keys_scan(~P1 & 0x0F, KEY_NEXT);
        if (pressed)
            handle_keys(pressed);
        each_tick();
    }
}
