#include "ProblemList.h"
const std::vector<Check> &valueChecks()
{
    static const std::vector<Check> c;
    return c;
}
