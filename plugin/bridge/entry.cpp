// SPDX-License-Identifier: MIT
// The plugin's one exported function.
#include "binding/class_reference.h"
#include "binding/contained.h"
#include "binding/export.h"
#include "binding/memory_block.h"
#include "binding/service.h"
#include "plugin/bridge/module.h"
#include "plugin/document/compressor_handle.h"
#include "plugin/script/host_version.h"

namespace quillbar {

namespace {

// Hosts before this one offer what the plugin needs only in part; the plugin stays inert on them.
constexpr double kOldestHost = 2013.1;
// A host that reports this version is admitted although it is smaller.
constexpr double kAdmittedHost = 100.0;
// Modules can be registered from this version on.
constexpr double kFirstHostWithModules = 2013.4;

void RegisterEverything() {
  for (ClassRecord *definition : moduleClasses) definition->flags |= kClassFlags;
  if (hostVersion >= kFirstHostWithModules) {
    CallHost<service::RegisterModule>(&moduleDefinition);
  } else {
    for (ClassRecord *definition : moduleClasses) CallHost<service::RegisterClass>(definition);
  }
}

void Enter(Resolver resolver) {
  PrepareForExceptions();
  hostResolver = resolver;
  CallHost<service::RegisterPluginVersion>(static_cast<int>(kInterfaceVersion));

  ClassReference<"CompressorHandle">::Clear();
  ClearMemoryBlockCaches();
  ClearCompressor();

  hostVersion = CallHost<service::GetRBVersion>();
  if (hostVersion < kOldestHost && hostVersion != kAdmittedHost) return;
  RegisterEverything();

  ClassReference<"QuillbarPDFWriter.Page">::Clear();
  ClassReference<"QuillbarPDFWriter.Font">::Clear();
  ClassReference<"QuillbarPDFWriter.Image">::Clear();
  ClassReference<"QuillbarPDFWriter.ExtendedGraphicsState">::Clear();
  ClassReference<"QuillbarPDFWriter.Outline">::Clear();
  ClassReference<"PixelRaster">::Clear();
  CallHost<service::ObjectType>("PixelRaster");

  ClassReference<"QuillbarPDFWriter.Destination">::Clear();
  ClassReference<"QuillbarPDFWriter.TextAnnotation">::Clear();
  ClassReference<"QuillbarPDFWriter.URLAnnotation">::Clear();
  ClassReference<"QuillbarPDFWriter.LinkAnnotation">::Clear();
  HostSlot<global_method::Len>::Clear();
  HostSlot<global_method::Asc>::Clear();
  HostSlot<global_method::Mid>::Clear();
}

}  // namespace

}  // namespace quillbar

/// Called once by the host after loading: keeps the resolver, announces the plugin-interface version and,
/// on a host that is new enough, registers the module.
QUILLBAR_EXPORT void REALPluginMain(quillbar::Resolver resolver) { quillbar::Containing<&quillbar::Enter>()(resolver); }
