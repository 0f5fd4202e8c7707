// Reference for the loop benchmark: the C runtime alone formatting and
// writing the lines the interpreter logs for one addInt/test/goto iteration.
#include <stdio.h>
#include <stdlib.h>

int main(int argc, char** argv) {
  const int iterations = argc > 1 ? atoi(argv[1]) : 1000000;
  setvbuf(stdout, NULL, _IOFBF, 1 << 16);  // buffered, as the interpreter's log is
  for (int n = 1; n <= iterations; ++n) {
    printf("AddInt value '%s' to the variable %s\n", "1", "n");
    printf("test function called ('%d' %d '%s'). type: %d\n", n, 2, "1000000", 1);
    printf("test function end with %s.\n", n < iterations ? "True" : "False");
    if (n < iterations) {
      printf("Entering onTrue handler.\n");
      printf("GoTo label '%s'\n", "top");
    }
  }
  return 0;
}
