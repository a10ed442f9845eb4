// Linked with one layer's every object and only the layers below it; the
// program is never run. A symbol left undefined is a call that points up.
int main() { return 0; }
