#pragma once
// Pictures for the sandbox's dishes: a plate on a course-coloured background, drawn as a PNG,
// so that image downloads and the image cache have real images to work with.

#include <string>

#include "sandbox/SeedData.h"

namespace nutrition::sandbox {

std::string dishImagePng(const SeedDish& dish);

}  // namespace nutrition::sandbox
