#include "host/tags/Tag.h"

Tag::~Tag() = default;
