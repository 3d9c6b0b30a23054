#import "LidLeaseXPCInterface.h"

#import "LidLeaseXPC.h"

namespace wakeloft::LidLeaseXPCInterface {

NSXPCInterface* make() { return [NSXPCInterface interfaceWithProtocol:@protocol(LidLeaseXPC)]; }

}  // namespace wakeloft::LidLeaseXPCInterface
