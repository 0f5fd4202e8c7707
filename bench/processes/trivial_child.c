/* The trivial child both sides of the process benchmark start: it ends at once. */
int main(void) { return 0; }
