#include "resources/resources.h"

#include <QtGlobal>

void initFeedbackResources()
{
    Q_INIT_RESOURCE(feedbackagent);
}
