<# Lists large
   files. #>
param([string]$Path = '.', [int]$Limit = 10)

function Get-Large {
    # The largest first.
    $found = Get-ChildItem $Path -Recurse |
        Where-Object { $_.Length -gt 1024 -and -not $_.PSIsContainer }
    foreach ($file in $found) {
        if ($null -eq $file) { continue }
        Write-Output "$($file.Name) is large"
    }
    return $true
}

Get-Large | ForEach-Object { $_.ToUpper() }
foreach ($item in $MyInvocation, $PSBoundParameters, $Matches) { Write-Debug "$item" }
if ($? -and $HOME -ilike 'C:*' -and $PID -ige 4 -and -not $IsLinux) { exit 0 }
switch ($PSItem) { 'a' { Clear-Host } default { Start-Job { 1 } | Wait-Job | Receive-Job } } # the end
clean { $Error.Clear() }
