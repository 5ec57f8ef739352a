// Where the names go: each label is tried beside its object (at a corner of the point it points
// to, above or below the object, to a side, or on it), then farther away, round the object at
// growing distances, with a leader line back to it. Of the places that stay in the viewport,
// overlap no label placed before and whose leader crosses none, it takes the one that hides least
// of the other objects and of its own, a place beside the object before one farther away. Labels
// are placed in order of priority (lower first; then the object more of which is seen first); one
// that finds no place is dropped.
#pragma once

#include <string>
#include <vector>

#include "shell/drawing/frame.h"

struct TsLabelRequest {
  int object = -1;
  std::string text;
  double width = 0, height = 0;  // of the text
  double ascent = 0;             // from the text's top to its baseline
  TsRect around;                 // the object's pixels
  TsPoint2 anchor;               // a point of the object that is seen: where a leader points to
  int priority = 0;
  double seen = 0;  // how much of the object is seen: the larger, the sooner among equals
};

// What the labels would hide: how many of the cells a rectangle covers show other objects, and how
// many show the object itself, of how many that show it in all.
class TsLabelSpace {
 public:
  virtual ~TsLabelSpace() = default;
  virtual void Count(const TsRect& box, int object, int& others, int& own, int& cells) const = 0;
  virtual int Seen(int object) const = 0;
};

// Padding between a label's text and the edge of its background, in pixels.
constexpr double kTsLabelPadding = 2;

// `space`, when given, says what each place would hide; without it the first place that is free
// is taken.
std::vector<TsLabel> TsPlaceLabels(std::vector<TsLabelRequest> requests, double width,
                                   double height, const TsLabelSpace* space = nullptr);
