#include "helper/LidHelperService.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "helper/LidLeasePeer.h"

namespace wakeloft {
namespace {

TEST(LidHelperServiceTest, TheCodeRequirementPinsIdentifierAndTeamAndRefusesAnythingElse) {
  EXPECT_EQ(LidHelperService::codeRequirement("com.wakeloft.app", "ABCDE12345"),
            "anchor apple generic and identifier \"com.wakeloft.app\" and certificate leaf[subject.OU] = \"ABCDE12345\"");
  EXPECT_NE(LidHelperService::codeRequirement("A-b.9", "ZZZZZZZZZZ"), std::nullopt);

  for (const char* team : {"ABCDE1234", "ABCDE123456", "abcde12345", "ABCDE-2345", ""}) {
    EXPECT_EQ(LidHelperService::codeRequirement("com.wakeloft.app", std::string(team)), std::nullopt) << team;
  }
  EXPECT_EQ(LidHelperService::codeRequirement("com.wakeloft.app", std::nullopt), std::nullopt);

  for (const char* identifier : {"", "com.wakeloft app", "com.wakeloft.app\" or true or \"", "caf\u00e9"}) {
    EXPECT_EQ(LidHelperService::codeRequirement(identifier, "ABCDE12345"), std::nullopt) << identifier;
  }
}

TEST(LidHelperServiceTest, TheCallerRequirementAdmitsTheAppAndItsCommandOfTheSameTeamOnly) {
  EXPECT_EQ(LidHelperService::callerRequirement("ABCDE12345"),
            "anchor apple generic and (identifier \"com.wakeloft.app\" or identifier \"com.wakeloft.app.command\") and "
            "certificate leaf[subject.OU] = \"ABCDE12345\"");
  EXPECT_EQ(LidHelperService::callerRequirement("abcde12345"), std::nullopt);
  EXPECT_EQ(LidHelperService::callerRequirement(std::nullopt), std::nullopt);
}

TEST(LidHelperServiceTest, TheCommandMayOnlyAskForTheStatusAndItsLeavingEndsNothing) {
  using Kind = LidLeaseRequest::Kind;
  std::vector<Kind> reached;
  const LidLeaseService::Requests service = [&](std::uint64_t, LidLeaseRequest request, LidLeaseService::ReplyHandler reply) {
    reached.push_back(request.kind());
    reply(std::nullopt);
  };
  const auto command = LidLeasePeer::admitting(LidLeasePeer::Kind::command, service);
  const auto app = LidLeasePeer::admitting(LidLeasePeer::Kind::app, service);
  std::vector<LidLeaseService::Reply> replies;
  const auto keep = [&](LidLeaseService::Reply reply) { replies.push_back(reply); };
  for (const auto& request : {LidLeaseRequest::renew(1e9), LidLeaseRequest::revoke(), LidLeaseRequest::status(),
                              LidLeaseRequest::disconnect()}) {
    command(1, request, keep);
    app(2, request, keep);
  }
  EXPECT_EQ(reached, (std::vector<Kind>{Kind::renew, Kind::revoke, Kind::status, Kind::status, Kind::disconnect}));
  const std::string refused(LidLeasePeer::commandRefusal);
  EXPECT_EQ(replies, (std::vector<LidLeaseService::Reply>{refused, std::nullopt, refused, std::nullopt, std::nullopt,
                                                          std::nullopt, std::nullopt}));
}

}  // namespace
}  // namespace wakeloft
