// Texts in the order of the user's locale.
#pragma once

#include <vector>

#include "ports/locale.h"

namespace orvello {

void sort_texts(std::vector<Text>& texts, const Locale& locale);
// Puts it where it belongs among sorted ones, behind those that are no different.
void insert_sorted(std::vector<Text>& texts, Text text, const Locale& locale);
// Where it stands, -1: nowhere. Letter case counts.
int row_of_text(const std::vector<Text>& texts, TextView text);

}  // namespace orvello
