#include "xpath/xpath.h"
#include <gtest/gtest.h>
