# Sourced by trials/windows/try: the port accesses of an entry frame, worked out from the wire.
#
# entry_accesses SDA1 SDA0 SCL1 SCL0 SDA_IN BYTE...
#   SDA1, SDA0   what the data register at 378 gets for SDA high and low, in hexadecimal
#   SCL1, SCL0   the same for SCL and the control register at 37A
#   SDA_IN       low or high: what SDA shows when the status register at 379 reads 00
#   BYTE...      what the frame sends; it stops behind the first byte that is not acknowledged
#
# Prints one access a line, as the recording driver library writes them.

entry_accesses() {
  local sda=([1]="378=$1" [0]="378=$2") scl=([1]="37A=$3" [0]="37A=$4") sda_in=$5 byte bit level
  shift 5
  printf '%s\n' "${sda[1]}" "${scl[1]}" "${sda[0]}" "${scl[0]}"  # START
  for byte in "$@"; do
    for bit in 7 6 5 4 3 2 1 0; do
      level=$(((0x$byte >> bit) & 1))
      printf '%s\n' "${scl[0]}" "${sda[level]}" "${scl[1]}" "${scl[0]}"
    done
    printf '%s\n' "${sda[1]}" "${scl[1]}" '379?00' "${scl[0]}"  # the acknowledge clock
    [ "$sda_in" = low ] || break
  done
  printf '%s\n' "${sda[1]}" "${sda[0]}" "${scl[1]}" "${sda[1]}"  # STOP
}
