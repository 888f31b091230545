// Temporary until the control lands.
namespace vesko_pending {
int placeholder() { return 0; }
}
