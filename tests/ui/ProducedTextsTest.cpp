// Every text in the catalog is produced by some part of the interface, and
// every text the parts produce is in the catalog: together with the tables
// test this ties the tables to the code.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "ui/FailureText.h"
#include "ui/QuitConfirmationAlert.h"
#include "ui/TextCatalog.h"

namespace wakeloft {
namespace {

using KeySet = std::set<std::pair<std::string, TextTable>>;

void collect(KeySet& keys, const LocalizedText& text) {
  if (text.key()) keys.emplace(std::string(text.key()->key()), text.key()->table());
}

std::vector<AwakeFailure> everyFailure() {
  std::vector<AwakeFailure> failures = {AwakeFailure::AssertionRefused{-1}, AwakeFailure::Reported{"x"},
                                        AwakeFailure::LidHelperUnavailable{},
                                        AwakeFailure::LidHelperRequiresApproval{}};
  for (auto refusal : {LidHelperRefusal::settingUnreadable("d"), LidHelperRefusal::settingUnwritten("d"),
                       LidHelperRefusal::settingNotPutBack("d"), LidHelperRefusal::unrecognized("d"),
                       LidHelperRefusal::deadlineNotANumber(), LidHelperRefusal::settingOnElsewhere(),
                       LidHelperRefusal::settingTurnedOffElsewhere()}) {
    failures.push_back(AwakeFailure::LidHelperRefused{std::move(refusal)});
  }
  return failures;
}

KeySet produced() {
  KeySet keys;
  for (const auto& failure : everyFailure()) collect(keys, FailureText::describing(failure));
  for (const auto& question : {QuitConfirmation::awakeMode(600), QuitConfirmation::deepwake(600)}) {
    const auto alert = QuitConfirmationAlert::make(question, "en_US", LayoutDirection::leftToRight);
    collect(keys, alert->title);
    for (const auto& sentence : alert->message.sentences()) collect(keys, sentence);
    for (const auto& button : alert->buttons) collect(keys, button.title);
  }
  return keys;
}

TEST(ProducedTextsTest, TheCatalogIsExactlyWhatTheInterfaceProduces) {
  KeySet catalog;
  for (const auto& key : TextCatalog::all()) catalog.emplace(std::string(key.key()), key.table());
  const auto keys = produced();
  for (const auto& key : keys) EXPECT_TRUE(catalog.contains(key)) << "not in the catalog: " << key.first;
  for (const auto& key : catalog) EXPECT_TRUE(keys.contains(key)) << "produced by nothing: " << key.first;
}

}  // namespace
}  // namespace wakeloft
