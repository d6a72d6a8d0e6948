// SPDX-License-Identifier: MIT
// Random: numbers from a generator of its own for each object, repeatable with a seed.

#include <cstdint>
#include <random>

#include "host/language/library/classes/language_classes.h"
#include "host/language/run/exceptions.h"
#include "host/runtime/native_class.h"

namespace quillbar::language {
namespace {

using Self = Instance<"Random">;
namespace native = host::native;
using host::NativeClass;

struct RandomData {
  Integer seed = static_cast<Integer>(std::random_device()());
  std::mt19937_64 engine{static_cast<std::uint64_t>(seed)};
};

RandomData &Of(Object self) { return NativeClass<RandomData>::Of(self); }

void Construct(Self *) {}

Integer InRange(Self *self, Integer least, Integer most) {
  if (least > most) throw LibraryError{ExceptionKind::kInvalidArgument, "the least number is above the greatest one"};
  return std::uniform_int_distribution<Integer>(least, most)(Of(self).engine);
}

double Number(Self *self) { return std::uniform_real_distribution<double>(0, 1)(Of(self).engine); }
double Gaussian(Self *self) { return std::normal_distribution<double>()(Of(self).engine); }
Integer Seed(Self *self) { return Of(self).seed; }

void SetSeed(Self *self, std::intptr_t, Integer seed) {
  Of(self).seed = seed;
  Of(self).engine.seed(static_cast<std::uint64_t>(seed));
}

using RandomMembers =
    Members<Methods<native::Method<"Constructor()", Construct>,
                    native::Method<"InRange(least as Integer, most as Integer) as Integer", InRange>,
                    native::Method<"Number() as Double", Number>, native::Method<"Gaussian() as Double", Gaussian>>,
            Properties<native::Property<"Seed", "Integer", Seed, SetSeed>>>;

}  // namespace

ClassRecord &RandomRecord() { return NativeClass<RandomData>::Record<RandomMembers>("Random"); }

}  // namespace quillbar::language
