#pragma once

#include <memory>

class QCoreApplication;

namespace nordkeep {

/// Makes the application object of a copy without a screen; it opens no display and needs none.
std::unique_ptr<QCoreApplication> MakeCoreApplication(int& argc, char** argv);
/// True when a screen can be had: the toolkit would end the program otherwise.
bool IsScreenThere();
/// Takes back what the toolkit brings with it on the sly: to be called right after any application object is
/// made. Numbers are written in the "C" locale again, and no proxy of the system comes into play.
void SettleApplication();

}  // namespace nordkeep
