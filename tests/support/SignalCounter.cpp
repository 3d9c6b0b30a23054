// A child for the signal tests: counts the signals it is sent, in C handlers
// that cannot merge two deliveries the way a script's handler can, and writes
// the counts to the file named by its argument once no signal has come for a
// moment after the first. Says "ready" on stdout once its handlers are in.

#include <signal.h>
#include <unistd.h>

#include <cstdio>

namespace {

volatile sig_atomic_t counts[5];
constexpr int counted[5] = {SIGINT, SIGQUIT, SIGHUP, SIGTERM, SIGCONT};
volatile sig_atomic_t any = 0;

void count(int signal) {
  for (int i = 0; i < 5; ++i) {
    if (counted[i] == signal) counts[i] = counts[i] + 1;
  }
  any = 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  struct sigaction action {};
  action.sa_handler = count;
  sigemptyset(&action.sa_mask);
  for (const int signal : counted) sigaction(signal, &action, nullptr);
  std::printf("ready\n");
  std::fflush(stdout);
  // Bounded: a test that sends nothing ends after 10 s.
  for (int tenths = 0; !any && tenths < 100; ++tenths) usleep(100'000);
  // Duplicates come within microseconds; a fifth of a second is plenty.
  for (sig_atomic_t seen = -1; seen != counts[0] + counts[1] + counts[2] + counts[3] + counts[4];) {
    seen = counts[0] + counts[1] + counts[2] + counts[3] + counts[4];
    usleep(200'000);
  }
  const bool foreground = isatty(STDIN_FILENO) && tcgetpgrp(STDIN_FILENO) == getpgrp();
  FILE* file = std::fopen(argv[1], "w");
  if (!file) return 3;
  std::fprintf(file, "INT=%d QUIT=%d HUP=%d TERM=%d CONT=%d foreground=%d", static_cast<int>(counts[0]),
               static_cast<int>(counts[1]), static_cast<int>(counts[2]), static_cast<int>(counts[3]),
               static_cast<int>(counts[4]), foreground ? 1 : 0);
  std::fclose(file);
  return 0;
}
