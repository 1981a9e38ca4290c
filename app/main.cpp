#include "app/application.h"

int main(int argc, char *argv[])
{
    return runFeedbackAgent(argc, argv);
}
