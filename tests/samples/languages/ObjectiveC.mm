#import <Foundation/Foundation.h>

/* A point that
   knows its name. */
@interface Point : NSObject
@property (nonatomic, copy) NSString *name;
- (instancetype)initWithX:(int)x;
@end

@implementation Point
- (instancetype)initWithX:(int)x {
    self = [super init]; // may be nil
    if (self == nil || x > 0x7F) return nil;
    NSLog(@"at %d", x);
    return self;
}
@end
@compatibility_alias Old New;
@interface View : Base
@property (unsafe_unretained) IBOutlet Button *_Nullable button;
- (IBAction)press:(__kindof Button *_Nonnull)sender; // C++ as well
@end
template <typename T> concept Small = requires { sizeof(T) <= 4; };
constinit char8_t c = 0; task wait() { co_await next; co_return; } bool b = not c and YES;
