#include "cfa/ahd/choice.h"

#include "cfa/ahd/running_choice.h"

namespace vistrel::core {

template <class T>
void AhdChoice<T>::run() const {
  runningChoice(sums_.half(0, 0), sums_.half(0, 1), images_.halfSize(), choice_.half(0, 0),
                choice_.half(0, 1));
}

template class AhdChoice<uint8_t>;
template class AhdChoice<uint16_t>;

}  // namespace vistrel::core
