// Entry of the ZEMA Block Tool.
int main() { return 0; }
