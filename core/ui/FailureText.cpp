#include "ui/FailureText.h"

#include "ui/TextCatalog.h"

namespace wakeloft::FailureText {

LocalizedText describing(const AwakeFailure& failure) {
  using F = AwakeFailure;
  return std::visit(
      [](const auto& value) -> LocalizedText {
        using T = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<T, F::AssertionRefused>) {
          return {TextCatalog::assertionRefused, {value.code}};
        } else if constexpr (std::is_same_v<T, F::LidHelperRefused>) {
          return describing(value.refusal);
        } else if constexpr (std::is_same_v<T, F::Reported>) {
          return LocalizedText::verbatim(value.message);
        } else if constexpr (std::is_same_v<T, F::LidHelperUnavailable>) {
          return TextCatalog::lidHelperUnavailable;
        } else {
          static_assert(std::is_same_v<T, F::LidHelperRequiresApproval>);
          return TextCatalog::lidHelperRequiresApproval;
        }
      },
      failure.value());
}

LocalizedText describing(const LidHelperRefusal& refusal) {
  using Kind = LidHelperRefusal::Kind;
  switch (refusal.kind()) {
    case Kind::settingUnreadable: return {TextCatalog::settingUnreadable, {refusal.detail()}};
    case Kind::settingUnwritten: return {TextCatalog::settingUnwritten, {refusal.detail()}};
    case Kind::settingNotPutBack: return {TextCatalog::settingNotPutBack, {refusal.detail()}};
    case Kind::unrecognized: break;
    case Kind::deadlineNotANumber: return TextCatalog::deadlineNotANumber;
    case Kind::settingOnElsewhere: return TextCatalog::settingOnElsewhere;
    case Kind::settingTurnedOffElsewhere: return TextCatalog::settingTurnedOffElsewhere;
  }
  return LocalizedText::verbatim(refusal.detail());
}

}  // namespace wakeloft::FailureText
