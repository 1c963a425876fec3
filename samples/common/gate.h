/* The gate between the two 64 Kbyte banks of a sample.

   Port pin P1.7 selects the bank the processor fetches from. It is high after
   reset: the main bank runs. The services (display, texts, fonts) are in the
   other bank. The code of the gate stands at the same address in both banks,
   so that it goes on when the bank under it changes.

   Code addresses in both banks (make-samples passes them to the linker):
     0x0000  vectors and start-up code
     0x0100  the gate
     0x0120  addresses of the services (service bank only)
     0x0140  everything else

   The banks are linked separately, but they use the same internal RAM:
     0x00-0x07  registers             0x21-0x37  service bank
     0x08-0x0F  mailbox               0x38-0x7F  main bank, behind it
     0x20       bits, main bank                  the stack, to 0xFF */
#ifndef GATE_H
#define GATE_H

struct mailbox {                        /* arguments of a service, see the enum of the sample */
    unsigned char row;
    unsigned char column;
    unsigned char item;
    unsigned char language;
    int value;
    int limit;
};
extern __data __at (0x08) struct mailbox mailbox;

#define LANGUAGES 3                     /* English, German, French */

/* For the main bank: runs one service and comes back. Interrupts must be off,
   the service bank has no handlers. */
void gate_call(unsigned char service);

/* For the service bank: its table, one entry per service. */
typedef void (*service_function)(void);
#define SERVICE_TABLE const service_function __code __at (0x0120)

/* For the service bank: starts the main bank as after a reset. */
void gate_restart(void);

#endif
