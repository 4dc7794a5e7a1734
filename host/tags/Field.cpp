#include "host/tags/Field.h"

#include <utility>

Field::Field(std::string name) : name_(std::move(name)) {}

Field::~Field() = default;
