#include <quillbox/automation.h>
#include <stdio.h>

int main(void) {
    QbObject *factory = NULL;
    printf("%d", DllCanUnloadNow() == QB_OK);
    printf(" %d\n", DllGetClassObject("{00000000-0000-0000-0000-000000000000}", QB_AUTOMATION_VERSION, &factory) == QB_NO_CLASS);
    return 0;
}
