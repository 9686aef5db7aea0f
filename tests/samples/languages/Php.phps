namespace App\Model;

use App\Base;

/* A row of
   a table. */
final class Row extends Base
{
    private const LIMIT = 100;

    public function name(?string $key = null): string
    {
        // The first one wins.
        if ($key === NULL) { return $this->names[0]; }
        # so does this
        return match (true) {
            strlen($key) > 1.5 => "long \"$key\"",
            default => 'short',
        };
    }
}
