#include "Extension/Bundle/FOLIOvaultWidgetBundle.h"

int main() {
    return foliovault::FOLIOvaultWidgetBundle::main();
}
