#include "app/application.h"
#include "app/processexit.h"

int main(int argc, char *argv[])
{
    endProcess(runFeedbackAgent(argc, argv));
}
