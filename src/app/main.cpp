#include "app/NPApp.h"

int main() {
    NPApp application;
    application.Run();
    return 0;
}
