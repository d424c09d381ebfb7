#pragma once

#include <QString>

namespace pontrel::tour {

/// What the processes do that the tour starts: the program itself, with somebody who drives it.
enum class Part { Visit, SecondStart };

/// The argument that names the part to a process of the tour.
[[nodiscard]] QString argumentOf(Part part);

/// Takes the whole tour in a program folder made for it, in a process of its own, and says where the pictures
/// are. Returns the exit status: 0 where every step did what it should, otherwise 1.
[[nodiscard]] int takeTour(const QString& pictureFolder);

/// Runs the program in this process and takes the part's steps in it. Returns the exit status likewise.
[[nodiscard]] int takePart(Part part, const QString& pictureFolder, char** arguments);

} // namespace pontrel::tour
