#pragma once

// What Foundation and AppKit of macOS declare and GNUstep's do not. Included in front of every file of the platform.

#import <AppKit/AppKit.h>

// Names that GNUstep takes for translations, and C++ libraries for themselves.
#undef _
#undef __

using NSURLBookmarkCreationOptions = NSUInteger;
using NSURLBookmarkResolutionOptions = NSUInteger;

@interface NSURL (Bookmarks)
- (NSData *)bookmarkDataWithOptions:(NSURLBookmarkCreationOptions)options
     includingResourceValuesForKeys:(NSArray *)keys
                      relativeToURL:(NSURL *)base
                              error:(NSError **)error;
+ (NSURL *)URLByResolvingBookmarkData:(NSData *)data
                              options:(NSURLBookmarkResolutionOptions)options
                        relativeToURL:(NSURL *)base
                  bookmarkDataIsStale:(BOOL *)stale
                                error:(NSError **)error;
- (BOOL)startAccessingSecurityScopedResource;
- (void)stopAccessingSecurityScopedResource;
@end

@interface NSFileManager (GroupContainers)
- (NSURL *)containerURLForSecurityApplicationGroupIdentifier:(NSString *)group;
@end

@interface NSWorkspaceOpenConfiguration : NSObject
+ (NSWorkspaceOpenConfiguration *)configuration;
- (void)setActivates:(BOOL)activates;
- (void)setHides:(BOOL)hides;
- (void)setCreatesNewApplicationInstance:(BOOL)isNew;
- (void)setArguments:(NSArray *)arguments;
@end

using Configuration = NSWorkspaceOpenConfiguration;
using Completion = void (^)(NSRunningApplication *, NSError *);

@interface NSWorkspace (Launches)
- (NSURL *)URLForApplicationWithBundleIdentifier:(NSString *)identifier;
- (void)openURL:(NSURL *)url configuration:(Configuration *)with completionHandler:(Completion)handler;
- (void)openURLs:(NSArray *)urls
    withApplicationAtURL:(NSURL *)application
           configuration:(Configuration *)with
       completionHandler:(Completion)handler;
- (void)openApplicationAtURL:(NSURL *)url configuration:(Configuration *)with completionHandler:(Completion)handler;
@end
